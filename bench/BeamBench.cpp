// A thousand beam files of three spans, each another one, with twenty ultimate combinations: from text to members, and with the check of them all to
// BS 5950-1. Floors: copying as many members that are ready, the statics of as many beams that are read, and checking as many members that are read.

#include "Bench.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "check/CheckedBeam.h"
#include "keltrix/statics/GeneratedMember.h"
#include "text/Text.h"

namespace Keltrix::Bench {

namespace {

using namespace Host;

constexpr std::size_t BEAMS = 1000;
constexpr std::size_t COMBINATIONS = 20;

// Dead load, imposed load by span and wind; twenty combinations of the file's own, so that each beam has as many.
std::string BeamText(std::size_t i)
{
    const double length = 6.0 + 0.003 * static_cast<double>(i);
    std::string text = "section = \"UB 457x191x67\"\ngrade = \"S275\"\nspans = [" + Shortest(length) + ", " +
                       Shortest(length + 1.0) + ", " + Shortest(length) +
                       "]\nsupports = \"pinned\"\ndeflection = false\npattern = false\n"
                       "[[restraint]]\nfrom = 0\nholds = \"Top flange lateral\"\n"
                       "[[load]]\ncase = \"Dead\"\nkind = \"permanent\"\nudl = 8\n"
                       "[[load]]\ncase = \"Imposed\"\nkind = \"imposed\"\nudl = 12\n"
                       "[[load]]\ncase = \"Imposed\"\npoint = 40\nat = [3, 10]\n"
                       "[[load]]\ncase = \"Wind\"\nkind = \"wind\"\nudl = -5\n";
    for (std::size_t k = 0; k < COMBINATIONS; ++k)
        text += "[[combination]]\nname = \"c" + std::to_string(k) +
                "\"\nfactors = { Dead = " + Shortest(1.0 + 0.02 * static_cast<double>(k)) +
                ", Imposed = " + Shortest(1.6 - 0.05 * static_cast<double>(k)) +
                ", Wind = " + Shortest(0.07 * static_cast<double>(k)) + " }\n";
    return text;
}

std::vector<Statics::Combination> Ultimate(const Statics::Analysis& analysis, const BeamFile& file)
{
    std::vector<Statics::Combination> list = Statics::Expand(analysis, file.own).list;
    if (list.size() != COMBINATIONS) throw std::logic_error("the benchmark's beam has not 20 combinations");
    return list;
}

std::vector<Statics::GeneratedMember> Members(const BeamFile& file)
{
    const Statics::Analysis analysis(file.beam);
    return Statics::MakeMembers(analysis, Ultimate(analysis, file));
}

double Checked(const Beam& beam, const CodeChoice& code)
{
    const double utilisation = CheckBeam(beam, code, false).Utilisation();
    if (!(utilisation > 0.0)) throw std::logic_error("the benchmark's beam was not checked");
    return utilisation;
}

void RegisterMembersOfBeams(const std::vector<BeamFile>& files)
{
    const auto kept = std::make_shared<std::vector<BeamFile>>(files);
    const auto ready = std::make_shared<std::vector<std::vector<Statics::GeneratedMember>>>();
    for (const BeamFile& file : files)
        ready->push_back(Members(file));
    MeasureWithFloor(
        "1,000 beams with 20 combinations, statics and members",
        [kept] {
            std::size_t points = 0;
            for (const BeamFile& file : *kept)
                points += Members(file).front().points.size();
            return points;
        },
        [ready] {
            std::size_t points = 0;
            for (const auto& members : *ready)
                points += std::vector<Statics::GeneratedMember>(members).front().points.size();
            return points;
        });
}

} // namespace

void RegisterBeams()
{
    const CodeChoice code = DefaultCode();
    std::vector<BeamFile> files;
    const auto texts = std::make_shared<std::vector<std::string>>();
    for (std::size_t i = 0; i < BEAMS; ++i) {
        texts->push_back(BeamText(i));
        files.push_back(ReadBeamFile("beam", texts->back(), code.code));
        if (files.back().HasErrors()) throw std::logic_error("the benchmark's beam is not read");
    }
    RegisterMembersOfBeams(files);

    // Ten beams stand for the thousand: checks take a hundred times as long as statics.
    constexpr std::size_t few = 10;
    const Work perBeam{static_cast<double>(few)};
    const auto beams = std::make_shared<std::vector<Beam>>();
    for (std::size_t i = 0; i < few; ++i)
        beams->push_back(ReadBeam("beam", (*texts)[i * BEAMS / few], {}, code));
    // What of it is no check: TOML, statics, members as files and read again.
    MeasureWithFloor(
        "a beam file with 20 combinations, from text to its members",
        [texts, code] {
            std::size_t members = 0;
            for (std::size_t i = 0; i < few; ++i)
                members += ReadBeam("beam", (*texts)[i * BEAMS / few], {}, code).members.size();
            return members;
        },
        [texts, code] {
            std::size_t points = 0;
            for (std::size_t i = 0; i < few; ++i)
                points += Members(ReadBeamFile("beam", (*texts)[i * BEAMS / few], code.code)).front().points.size();
            return points;
        },
        0.0, perBeam);
    MeasureWithFloor(
        "a beam file with 20 combinations, from text to its check",
        [texts, code] {
            double sum = 0.0;
            for (std::size_t i = 0; i < few; ++i)
                sum += Checked(ReadBeam("beam", (*texts)[i * BEAMS / few], {}, code), code);
            return sum;
        },
        [beams, code] {
            double sum = 0.0;
            for (const Beam& beam : *beams)
                for (const MemberFile& member : beam.members)
                    sum += CheckMember(member, 0, code, false).Utilisation();
            return sum;
        },
        0.0, perBeam);
}

} // namespace Keltrix::Bench
