// tool_layer.h - all of the tool chain's common layer: containers, messages, options.
// For programs that link libtool_layer.a.  The front end includes the headers that it needs
// instead.
#pragma once
#include "CONTAINERS/mzone.h"
#include "CONTAINERS/sdshash.h"
#include "CONTAINERS/sdslist.h"
#include "DIAG/diag.h"
#include "DIAG/diag_info.h"
#include "DIAG/diag_srcinfo.h"
#include "DIAG/user_msg_api.h"
#include "options/option_diag.h"
#include "options/option_obj.h"
#include "options/option_tables.h"
#include "options/option_tools.h"
