// Built for an interface of another time: nothing but the version may be read of it.
#include "keltrix/design/DesignCode.h"

extern "C" KELTRIX_MODULE_EXPORT const Keltrix::Design::CodeModule* keltrix_design_code()
{
    static const Keltrix::Design::CodeModule module{0, reinterpret_cast<const Keltrix::Design::DesignCode*>(1)};
    return &module;
}
