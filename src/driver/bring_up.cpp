// bring_up.cpp - state of lowering, which is still being written.
bool il_lowering_underway __attribute__((weak));
