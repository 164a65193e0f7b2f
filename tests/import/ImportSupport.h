#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "import/Import.h"
#include "memberfile/CodelessMember.h"
#include "memberfile/MemberFile.h"
#include "text/Text.h"

namespace Keltrix::ImportTest {

using namespace Host;

/// The tables as files "forces.csv" and "members.csv". `map` as on the command line.
inline Import Imported(const std::string& forces, const std::string& members, const std::vector<std::string>& map,
                       bool allowRepeats = false)
{
    ImportSettings settings;
    EXPECT_EQ(ReadImportMap(map, settings), "");
    settings.forces.allowRepeats = allowRepeats;
    return ImportForces({"forces.csv", forces}, {"members.csv", members}, settings);
}

inline std::string Messages(const Import& import)
{
    std::string text;
    for (const ImportFinding& finding : import.findings)
        text += finding.Message() + '\n';
    return text;
}

/// The members of an import as they are read.
class ReadBack {
public:
    explicit ReadBack(const Import& import) : m_file(SourceText{"import", Wide(import.text)})
    {
        for (std::size_t i = 0; i < m_file.MemberCount(); ++i)
            m_file.ReadInto(i, m_members.emplace_back());
    }
    std::size_t Count() const { return m_members.size(); }
    const CodelessMember& Member(std::size_t i) const { return m_members[i]; }
    std::string Title(std::size_t i) const { return Utf8(m_file.Member(i).title); }

private:
    MemberFile m_file;
    std::vector<CodelessMember> m_members;
};

} // namespace Keltrix::ImportTest
