// proves: asm at file level, in functions and as names of objects and functions reaches the output
int printf(const char *, ...);
__asm__(".data\n.globl asm_word\nasm_word: .word 41\n.text\n");
__asm__(".text\n.globl asm_add\n" ".type asm_add, %function\n" "asm_add: add r0, r0, r1\n\tbx lr\n");
extern int asm_word;
extern int renamed __asm__("asm_word");
int plus(int, int) __asm__("asm_add");
int defined_here __asm__("other_name") = 7;
extern int seen_elsewhere __asm__("other_name");
static int set(int *p) __asm__("the_setter");
static int set(int *p) { *p = 3; __asm__("nop"); return 4; }
int main(void)
{
  int cell = 5;
  __asm__ volatile("nop\n\tnop");
  __asm__("");
  printf("%d %d %d ", plus(3, 4), set(&cell), cell);
  asm_word++;
  printf("%d %d %d\n", asm_word, renamed + 1, defined_here + seen_elsewhere);
  return 0;
}
