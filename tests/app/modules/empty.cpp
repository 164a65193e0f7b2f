// A module that gives no design code.
#include "keltrix/design/DesignCode.h"

extern "C" KELTRIX_MODULE_EXPORT const Keltrix::Design::CodeModule* keltrix_design_code() { return nullptr; }
