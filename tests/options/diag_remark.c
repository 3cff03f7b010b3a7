// options: --diag_remark=1181 -r
// proves: a remark is shown with --remarks
#warning one // expect: remark warning_directive
