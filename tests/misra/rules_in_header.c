/* options: --check_misra=2,7,19 --sys_include=Inputs/system */
/* proves: what is tested in the text of a source is tested in its headers too, but not in those of the system */
#include "Inputs/faults.h"
#include <faults.h>
