// options: --gcc --noenhance
// proves: up to five lines ahead are newlines, more are a directive; a broken line keeps its number
int a;





int b;






int c;
int f(int first_operand, int second_operand, int third_operand)
{
  return first_operand * second_operand + second_operand * third_operand + third_operand * first_operand;
}
