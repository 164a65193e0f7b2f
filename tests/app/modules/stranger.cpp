// A shared library that is no module.
extern "C" __attribute__((visibility("default"))) int SomethingElse() { return 1; }
