// fe_wrapup.h - what follows the last declaration: a unit's wrap-up, then the whole program's.
#pragma once

void translation_unit(); // parses all declarations of the unit in force
void translation_unit_wrapup();
void fe_wrapup();
void fe_wrapup_part_2();
