#include "check/CheckedForm.h"

#include <utility>

namespace Keltrix::Host {

CheckedForm::CheckedForm(MemberFile file, const CodeChoice& choice) : m_file(std::move(file)), m_form(m_file)
{
    if (m_file.MemberCount() != 1 || m_file.Check().Errors() > 0) return;
    try {
        m_checked = ReadToCheck(m_file, 0, choice);
    } catch (const BadMember&) {
        return;
    }
    m_checked->result->EnableText(false);
    m_checked->member->SetResult(m_checked->result.get());
}

const CheckedMember* CheckedForm::Check(const MemberNumbers& numbers)
{
    if (!m_checked || !m_form.Take(numbers)) return nullptr;
    m_checked->result->Clear();
    m_checked->warnings.clear();
    m_form.Give(*m_checked->member);
    try {
        RunCheck(m_file, 0, *m_checked);
    } catch (const BadMember&) {
        return nullptr;
    }
    return &*m_checked;
}

} // namespace Keltrix::Host
