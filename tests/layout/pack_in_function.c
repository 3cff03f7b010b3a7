// options: -n --remarks
// proves: packing that a function leaves behind is a remark
int f(void)
{
#pragma pack(2)  // expect: remark local_pragma_pack
  return 1;
}
