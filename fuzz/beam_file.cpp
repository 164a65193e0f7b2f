// Reading beam files: whatever the bytes are, there are members or an error; members read without one, and each ends as it should.
#include "beamfile/BeamMembers.h"

#include <cstdlib>

#include "Fuzz.h"
#include "memberfile/MemberFile.h"
#include "text/BadInput.h"
#include "text/Text.h"

using namespace Keltrix;
using namespace Keltrix::Host;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    try {
        const BeamFile file = ReadBeamFile("beam.toml", bytes, nullptr);
        const BeamMembers beam = MembersOf(file, nullptr);
        if (beam.HasErrors() != beam.members.empty()) std::abort();
        for (const Defect& defect : beam.defects)
            if (defect.line < 1 || BeamMessage(defect, "beam.toml").find('\n') != std::string::npos) std::abort();
        for (const BeamMember& member : beam.members)
            if (MemberFile(SourceText{"member.csv", Wide(member.text)}).Check().Errors() > 0) std::abort();
    } catch (const BadInput&) {
    }
    return 0;
}
