// A module that gives no design code.
extern "C" __attribute__((visibility("default"))) const void* keltrix_design_code() { return nullptr; }
