// out_of_memory.h - the end of a tool that gets no memory.
#pragma once

// Writes "OUT OF MEMORY - APPLICATION ABORTED" to standard error and exits with status 1.
[[noreturn]] void tool_out_of_memory();
