#include "commands/EachMember.h"
namespace Keltrix::App {
ExitCode ShowSpans(const SpansOptions&, const Console&) { return EXIT_FINE; }
} // namespace Keltrix::App
