#pragma once

#include <cstddef>
#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace Keltrix::Fuzz {

/// Changes member files as people and programs change them: a field, a line, a name, a restraint, or the whole member by
/// something that leaves it in equilibrium. What it makes is a text like any other, so most of it is read and checked.
class MemberMutator {
public:
    /// Changes bytes at random, up to `limit` of them; of the fuzzer.
    using Scramble = std::function<std::string(std::string bytes, std::size_t limit)>;

    MemberMutator(unsigned seed, Scramble scramble) : m_random(seed), m_scramble(std::move(scramble)) {}

    std::string Mutate(std::string_view text);
    /// Lines of one text with those of another in their place.
    std::string Cross(std::string_view one, std::string_view other);

private:
    using Fields = std::vector<std::string>;
    using Edit = void (MemberMutator::*)();

    std::size_t Below(std::size_t count);
    double Between(double from, double to);
    template <class List>
    const auto& OneOf(const List& list)
    {
        return list[Below(std::size(list))];
    }

    void Read(std::string_view text);
    std::string Text() const;
    /// Places of the lines with one of the keywords; all lines for none.
    std::vector<std::size_t> Lines(std::string_view keyword) const;
    Fields* SomeLine(std::string_view keyword);
    double Number(const Fields& line, std::size_t field) const;
    void Set(Fields& line, std::size_t field, std::string value);
    void Set(Fields& line, std::size_t field, double value);

    void ChangeNumber();
    void ChangeRestraint();
    void ChangeSection();
    void ChangeGrade();
    void ChangeFactor();
    void ChangeOverrides();
    void ChangeTitle();
    void ChangeLoadHeights();
    void ScaleForces();
    void AddAxialForce();
    void AddMinorBending();
    void Stretch();
    void SplitSubSpan();
    void RepeatLine();
    void DropLine();
    void SwapLines();
    void ScrambleField();
    void RepeatMember();

    std::mt19937 m_random;
    Scramble m_scramble;
    std::vector<Fields> m_lines;
};

} // namespace Keltrix::Fuzz
