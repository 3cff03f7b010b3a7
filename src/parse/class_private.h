// class_private.h - what the files of class_decl share.
#pragma once
#include "parse/class_decl.h"

// class_member.cpp: one member declaration, up to its `;` (which stays current).
void scan_member_declaration(a_class_scan_state *scan);
