#include "memberfile/Defect.h"

namespace Keltrix::Host {

const char* SeverityWord(Severity severity)
{
    switch (severity) {
    case Severity::Error:
        return "error";
    case Severity::Warning:
        return "warning";
    default:
        return "note";
    }
}

std::string Defect::Message() const
{
    std::string message;
    if (!got.empty()) message = "got " + got;
    if (!expected.empty()) message += (message.empty() ? "expected " : ", expected ") + expected;
    if (!advice.empty()) message += (message.empty() ? "" : "; ") + advice;
    return message;
}

std::string Defect::Statement() const
{
    std::string text = keyword;
    if (!field.empty()) text += (keyword.empty() ? "" : " ") + field;
    if (!text.empty()) text += ": ";
    return text + Message();
}

std::string Defect::Text(const std::string& file) const
{
    const std::string kind = severity == Severity::Error ? std::string() : SeverityWord(severity) + std::string(": ");
    return file + ':' + std::to_string(line) + ": " + kind + Statement();
}

} // namespace Keltrix::Host
