// fe_init.h - initialisation of all modules in its fixed order.
#pragma once

extern const char *compile_time_text; // the run's date as ctime writes it; written by fe_init alone

void fe_early_init();               // before the command line: defaults only
void fe_one_time_init();            // after it: registrations
void fe_init_part_1();              // primary unit: all modules' general state
void fe_translation_unit_init();    // every unit: per-unit state, keywords, predeclared entities
void fe_init_part_2();              // opens the primary file, reads its first line
void fe_init_for_pch_prefix_scan(); // the same without preincludes
