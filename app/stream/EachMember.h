#pragma once

#include <functional>
#include <string>
#include <vector>

#include "check/DesignCodes.h"
#include "io/Console.h"
#include "io/Failure.h"
#include "memberfile/MemberFile.h"

namespace Keltrix::Design {
class DesignCode;
}
namespace Keltrix::Host {
struct Beam;
}

namespace Keltrix::App {

using UseMember = std::function<ExitCode(const MemberFile&, std::size_t)>;

/// What becomes of beam files among the member files.
struct BeamUse {
    /// Gives the modulus of elasticity and, with its annex, the standard of the combinations; without one the default code does.
    CodeChoice code = {};
    /// Called for each beam; without it the members of a beam's combinations are members by themselves.
    std::function<ExitCode(const Beam&)> use = {};
    /// Where the members are checked by themselves, in which the deflections of the beam have no place: takes a message of what came of
    /// them, and the exit code, which is that of a member that fails where one is not allowed.
    std::function<void(ExitCode, const std::string&)> tellDeflections = {};
};

/// A member, or a whole file, that cannot be used.
struct Refusal {
    std::string file;
    LineNumber line = 0; ///< at which the member begins; 0 where it is the file
    std::string title;
    std::vector<std::string> reasons; ///< messages, each with its place
    std::vector<MemberWarning> warnings = {};
};

/// Calls `use` for the members that reading accepts, one after another and in the memory of one, beam files included. What is wrong with the
/// others, and what reading loses of these, goes to the console's errors; a file or member that cannot be used does not
/// keep the others from it.
class MemberLoop {
public:
    /// `refused` is called for each member or file that cannot be used, after its messages.
    MemberLoop(const Console& console, const ReadingOptions& reading, UseMember use,
               std::function<void(const Refusal&)> refused = {}, BeamUse beams = {});

    void UseFile(const std::string& path);
    void UsePiece(const std::string& name, const MemberPiece& piece);
    /// Tells what is the matter with a file or member that cannot be used at all.
    void Refuse(const Refusal& refusal);

    /// The worst exit code of all members so far.
    ExitCode Worst() const { return m_worst; }

private:
    void UseBeam(const std::string& name, const MemberPiece& piece);
    void TellDeflections(const Beam& beam);
    void UseOne(const MemberFile& file, std::size_t i);
    void RefuseStrayLines(const MemberFile& file);
    void Leave(const Refusal& refusal);

    const Console& m_console;
    const ReadingOptions m_reading;
    UseMember m_use;
    std::function<void(const Refusal&)> m_refused;
    BeamUse m_beams;
    ExitCode m_worst = EXIT_FINE;
};

/// Uses every member of the files, in order, and returns the worst exit code of all.
ExitCode ForEachMember(const std::vector<std::string>& files, const ReadingOptions& reading, const Console& console,
                       const UseMember& use, const BeamUse& beams = {});

} // namespace Keltrix::App
