# 1 "deep.c"

# 1 "Inputs/deep12.h"
before 12
# 1 "Inputs/deep11.h"
before 11
# 1 "Inputs/deep10.h"
before 10
# 1 "Inputs/deep9.h"
before 9
# 1 "Inputs/deep8.h"
before 8
# 1 "Inputs/deep7.h"
before 7
# 1 "Inputs/deep6.h"
before 6
# 1 "Inputs/deep5.h"
before 5
# 1 "Inputs/deep4.h"
before 4
# 1 "Inputs/deep3.h"
before 3
# 1 "Inputs/deep2.h"
before 2
# 1 "Inputs/deep1.h"
before 1
# 1 "Inputs/deep0.h"
bottom
# 3 "Inputs/deep1.h"
behind 1 3
# 3 "Inputs/deep2.h"
behind 2 3
# 3 "Inputs/deep3.h"
behind 3 3
# 3 "Inputs/deep4.h"
behind 4 3
# 3 "Inputs/deep5.h"
behind 5 3
# 3 "Inputs/deep6.h"
behind 6 3
# 3 "Inputs/deep7.h"
behind 7 3
# 3 "Inputs/deep8.h"
behind 8 3
# 3 "Inputs/deep9.h"
behind 9 3
# 3 "Inputs/deep10.h"
behind 10 3
# 3 "Inputs/deep11.h"
behind 11 3
# 3 "Inputs/deep12.h"
behind 12 3
# 3 "deep.c"
after
