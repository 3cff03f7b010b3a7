/* options: --check_misra=all --misra_required=error -D "OCTAL=010" -D "SAME(x)=x" -D FINE -D "ALSO=(1)" */
/* options: -D MINUS=-1 -U GONE -U _INLINE */
/* proves: macros of the command line are reported without a position, by name, and don't end the run */
