/* options: --check_misra=19.17 */
/* proves: the parts of a conditional stand in one file */
#if 1
#include "Inputs/else_and_endif.h"
#include "Inputs/if_alone.h"
int taken;
#endif
