#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Keltrix {

/// The form in which designations are compared: upper case, without blanks; "x", "*" and the multiplication sign are X.
std::wstring NormalisedKey(std::wstring_view designation);

/// A designation taken apart: "UB 457x191x67.0" is the family UB and the sizes 457, 191 and 67.
struct SectionName {
    struct Size {
        std::wstring digits; ///< without leading and trailing zeros
        double log;          ///< natural logarithm; minus infinity for 0
    };

    std::wstring family; ///< letters in upper case; empty where the text has none
    std::vector<Size> sizes;
    bool isWhole = false; ///< family and sizes are all that the text holds

    /// The normalised key with every number in its shortest form; empty for a name that is not whole.
    std::wstring Key() const;
};

/// Takes a normalised key apart. The letters may also follow the numbers or stand between them (457x191x67UB, 457x191UB67),
/// and the letter of a wide flange beam may follow its size (HE200B).
SectionName ReadSectionName(std::wstring_view key);

/// The family under which the catalogue lists a family of another name: UB for UKB, L for UKA, RSA, EA and UA. Any other
/// family is returned as it is.
std::wstring_view UsualFamily(std::wstring_view family);

/// Whether the sizes are those of the family: EA has equal legs, UA unequal ones. True for every other family.
bool LegsFit(const SectionName& name);

/// The ways in which the catalogue may write a name of one of its families, the name itself first: one leg for both equal ones (SHS
/// 100x5, L 100x10), a square section among the rectangular ones, and tees as width x depth x mass.
std::vector<SectionName> OtherForms(const SectionName& name);

/// How far two designations are apart in meaning; 0 for the same family and sizes. Sizes differ by the logarithm of their
/// ratio, those of the serial size twice as much as the last one. Each size too few or too many counts 1, each letter of
/// the family to be changed 0.5. A family that is not given counts nothing.
double Difference(const SectionName& wanted, const SectionName& other);

} // namespace Keltrix
