/* options: --strict --c */
/* proves: outside GNU C the line ends there */
#define x 1 \  	
int a = 0;
/* expect-2: warning not_a_line_splice */
