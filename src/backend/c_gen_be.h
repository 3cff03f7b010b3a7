// c_gen_be.h - the writer of the generated C file.
#pragma once

// Writes the IL of the primary translation unit, lowered, as one C source text; with an
// instantiation directory one file more per instantiation.  Runs once, after fe_wrapup, when there
// were no errors. A failure to write is a catastrophe.
void back_end();

// Takes away what an earlier run wrote under the name of this run's output, so that a build can't go on with
// it after errors.  Only an ordinary file goes, and never the source.
void delete_stale_generated_file();
