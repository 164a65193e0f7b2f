#pragma once

#include <string>
#include <utility>
#include <vector>

#include "keltrix/design/DesignCode.h"

namespace Keltrix::Host {

/// The design codes of this process: those built in, the default first, then those that modules brought.
const std::vector<const Design::DesignCode*>& DesignCodes();

/// Adds the code of a module; `from` is what messages call the module. Throws BadInput where what the code says of itself cannot be
/// used, or another code has its name.
void AddDesignCode(const Design::DesignCode& code, const std::string& from);

/// Their ids in a sentence: "a, b or c"; empty without any.
std::string ListOfCodes();

/// The code of an id, letter case aside. Throws BadInput, with the names of all, for any other name; `subject` is what the message
/// calls the place of the name.
const Design::DesignCode& DesignCodeNamed(const std::string& name, const std::string& subject = "--code");

/// The place of a national annex of a code, letter case aside. Throws BadInput likewise.
std::size_t AnnexNamed(const Design::DesignCode& code, const std::string& name, const std::string& subject = "--annex");

/// "S275, S355 or S460": names of terms in a sentence.
std::string ListOf(const std::vector<Design::Term>& terms);

/// Whether one of the codes has a grade of that name, strengths of the user's own left out; without any code every name is one.
bool IsGradeOfAnyCode(const std::string& name);

/// Those grades, each once: "S275, S355".
std::string GradesOfAllCodes();

/// A design code with what is said about members beyond their files.
struct CodeChoice {
    const Design::DesignCode* code = nullptr;
    Design::CodeSettings settings;
};

/// What its national annex is called: the name of the annex, or the title of a file; empty where the code has none.
std::string AnnexOf(const CodeChoice& choice);

/// The place of a value's name among the values of a choice, counted from 1; 0 where it is none.
std::size_t PlaceOf(const std::vector<Design::Term>& values, const std::string& name);

/// Sets an option of a code from its name and value in words: a flag has an empty value, a length is in m. Throws BadInput for a name
/// that the code does not have, and for a value that means nothing.
void SetOption(const Design::DesignCode& code, const std::string& name, const std::string& value,
               Design::CodeSettings& settings);

/// A code with its annex and options in words: names and values as SetOption takes them. Without a name the code and the annex are the
/// first. Throws BadInput for names and values that there are not, and for an option that is given twice.
CodeChoice ChooseCode(const std::string& code, const std::string& annex,
                      const std::vector<std::pair<std::string, std::string>>& options);

/// The default code as it is. Throws BadInput where the process has none.
CodeChoice DefaultCode();

} // namespace Keltrix::Host
