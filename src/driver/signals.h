// signals.h - what the process says when a signal ends it.
#pragma once

// The front end's handler: reports the function, file and line that are being worked on.
void primary_signal_handler(int signal_number);
// Only installs itself again, for debugging.
void debug_signal_handler(int signal_number);
void signal_init();
// Installs `handler` for all signals that end a run; `callback`, if any, is called before the exit.
void install_common_handlers(void (*handler)(int), void (*callback)(int));
// Reports the signal with the formatted context and exits with status 2.  Allocates nothing.
[[noreturn]] void common_signal_handler(int signal_number, const char *program_name,
                                        const char *format, ...);
