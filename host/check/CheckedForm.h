#pragma once

#include <optional>
#include <string>

#include "check/CheckedMember.h"
#include "memberfile/MemberForm.h"

namespace Keltrix::Host {

/// A member file that is checked again and again with other numbers, without text. It finds what CheckMember finds of the file with these numbers.
class CheckedForm {
public:
    /// The file holds one member.
    CheckedForm(MemberFile file, const CodeChoice& choice);

    /// The member with other numbers, checked; it lasts until the next call. Null where reading finds anything in the file with these numbers, or
    /// the design code refuses it: the file itself has to be read for the reasons.
    const CheckedMember* Check(const MemberNumbers& numbers);

private:
    MemberFile m_file;
    MemberForm m_form;
    std::optional<CheckedMember> m_checked; // none where the design code does not take the words
};

} // namespace Keltrix::Host
