// lower_cplusplus.h - lowering of C++: what C can't say is rewritten in place.
#pragma once

// Lowers the region of a function, or the file scope at the end of the unit.
void lower_cplusplus_il_memory_region(int region);
