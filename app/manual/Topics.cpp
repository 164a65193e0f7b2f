#include "manual/Topics.h"

#include <array>

namespace Keltrix::App {

namespace {

constexpr std::array<HelpTopic, 4> TOPICS{{
    {"files", "What files ksteel reads",
     R"(Wherever FILE stands, ksteel reads any of these; - is standard input.

  member file     Lines of fields with commas: section, grade, member points with
                  what is held there, and the forces at the ends of each sub-span.
                  A file may hold many members. "ksteel new member" writes one.
  beam file       TOML: spans, supports, restraints, and loads by case, from which
                  ksteel makes combinations and forces. "ksteel new beam" writes
                  one.
  tables          CSV of forces and of members from a program for frames, for
                  "ksteel import".

With other options:

  --catalogue     Sections of your own, added to the built-in ones.
  --annex         National choices for EN 1993-1-1, as TOML.
  --module        A design code as a shared library. It runs with your rights.
)"},
    {"restraints", "How a file says what holds a member",
     R"(At a member point, along a sub-span, or as "holds" in a beam file. Letter case
does not matter.

  Free                           nothing
  Pinned                         both flanges laterally, torsion, both shears
  Fixed                          all of that, and all rotations and warping
  Top flange lateral             flange 1, the top one, laterally
  Bottom flange lateral          flange 2 laterally
  Top and Bottom flange lateral  both, and with them torsion

Or codes, separated by blanks:

  F1L F2L F12L   a flange held laterally; FCL and FTL the compressed one and the
                 one in tension
  F1W F2W        a flange kept from warping; F1P in part
  TR TP TF       torsion held; in part; by friction or bearing only
  MINV MAJV      the whole section held laterally; vertically
  MINR MAJR      rotation held about the minor axis; about the major axis

"ksteel spans FILE" shows what follows for each length between restraints.
)"},
    {"units", "Units and signs",
     R"(Member files and JSON are in SI: m, N, N.m, Pa. Beam files are in m, kN, kN/m and
kNm, sections in mm, strengths of a beam file in N/mm2. Reports choose units that
can be read.

  Fx             axial force, tension above zero
  Myy            major-axis moment; above zero it compresses flange 2, the bottom
                 one: a beam that sags under gravity has moments below zero
  loads          in beam files downwards above zero; axial loads to the right
)"},
    {"environment", "Variables that ksteel follows",
     R"(  NO_COLOR       set to anything: no colours, unless --color says otherwise
  TERM           "dumb": no colours
  TMPDIR         folder for the temporary file of a calculation sheet
)"},
}};

constexpr std::array<Example, 20> EXAMPLES{{
    {"check", "ksteel check examples/floor_beam.toml", "A beam with its loads, every combination of them."},
    {"check", "ksteel check examples/column.csv --code ec3 --annex uk", "A member with its forces, to EN 1993-1-1."},
    {"check", "ksteel check examples/*.csv --jobs 0 --report table",
     "Many members on all processors, the worst first."},
    {"check", "ksteel check examples/floor_beam.toml --format json --steps", "Findings and calculation steps as data."},
    {"report", "ksteel report examples/floor_beam.toml -o sheet.html --job \"Harbour Road\"", "The calculation sheet."},
    {"design", "ksteel design examples/floor_beam.toml --family UB,UC --max-depth 550",
     "The lightest section that passes."},
    {"capacity", "ksteel capacity \"UB 457x191x67\" --grade S355 --LE 2:6", "Resistances for lengths of 2 to 6 m."},
    {"compare", "ksteel compare examples/floor_beam.toml --code bs5950 --code ec3:uk",
     "Two design codes side by side."},
    {"validate", "ksteel validate examples/column.csv --code ec3",
     "What is wrong with a file, and what the code refuses."},
    {"show", "ksteel show examples/floor_beam.csv", "What was read."},
    {"spans", "ksteel spans examples/continuous_beam.csv --split lt", "What holds the member, and what acts between."},
    {"buckling", "ksteel buckling examples/floor_beam.csv --svg shape.svg",
     "Critical loads, and the shape as a drawing."},
    {"loads", "ksteel loads examples/two_span.toml", "Reactions, envelopes and deflections."},
    {"new", "ksteel new beam --span 8 --udl dead=12 --udl imposed=15 -o beam.toml", "A beam file to go on with."},
    {"import",
     "ksteel import examples/frame/forces.csv --members examples/frame/members.csv --map member-file -o members.csv",
     "Members from tables of another program."},
    {"section", "ksteel section \"RHS 200x100x8\" --svg section.svg", "Properties, and a drawing to scale."},
    {"sections", "ksteel sections --family UC --min-Ixx 20000", "The catalogue, filtered."},
    {"codes", "ksteel codes", "Design codes, options, annexes and scope."},
    {"manual", "ksteel manual check", "The page of a command; without one that of the program."},
    {"completion", "ksteel completion bash", "The script that bash sources."},
}};

} // namespace

std::span<const HelpTopic> HelpTopics() { return TOPICS; }

std::span<const Example> CommandExamples() { return EXAMPLES; }

} // namespace Keltrix::App
