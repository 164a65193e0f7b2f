#pragma once

#include <optional>
#include <string>
#include <vector>

namespace Keltrix::Host {

/// What a new beam file is to have; m, kN, kN/m, kNm.
struct NewBeam {
    enum class Shape { Uniform, Point, Moment };
    struct Load {
        std::string name; ///< of its case, which is a kind too: "dead", "imposed"
        Shape shape = Shape::Uniform;
        double value = 0.0;
        std::optional<double> from; ///< place of a point load or moment; of a uniform load without it the left end
        std::optional<double> to;   ///< of a uniform load; without it the right end
    };
    struct Restraint {
        std::string holds; ///< "Top flange lateral"
        double from = 0.0;
        std::optional<double> to; ///< without it the place alone
    };

    std::string title = "Beam";
    std::string section = "UB 457x191x67";
    std::string grade = "S275";
    std::string combinations; ///< the name of their standard; empty: the file leaves that to the design code
    std::vector<double> spans{9.0};
    std::vector<Load> loads;
    std::vector<Restraint> restraints;
};

/// A beam file with comments that say what each line means and what else can stand there. Without loads it has a load for
/// an example, which a comment says.
std::string BeamFileText(const NewBeam& beam);

/// "top@0:6", "imposed=45@3" and so on as the command line has them. Each returns what is wrong as a sentence, or nothing.
std::string ReadNewRestraint(const std::string& text, NewBeam& beam);
std::string ReadNewLoad(const std::string& text, NewBeam::Shape shape, NewBeam& beam);

/// What is wrong with places and spans that each by itself are sound: a place beyond the end. Empty where nothing is.
std::string FaultOf(const NewBeam& beam);

} // namespace Keltrix::Host
