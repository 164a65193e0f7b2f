// Checks the members of a file and prints what became of them: the findings of ksteel in a program of one's own.

#include <fstream>
#include <iostream>
#include <sstream>

#include "keltrix/host/Host.h"

int main(int count, char** arguments)
{
    if (count != 2) return 3;
    std::ostringstream text;
    text << std::ifstream(arguments[1], std::ios::binary).rdbuf();
    const Keltrix::Host::Outcomes outcomes = Keltrix::Host::Check(text.str(), arguments[1]);
    for (const Keltrix::Host::Outcome& member : outcomes.members) {
        std::cout << member.title << ": " << member.status << ", governed by " << member.governing << '\n';
        for (const Keltrix::Host::Diagnostic& diagnostic : member.diagnostics)
            std::cout << diagnostic.message << '\n';
    }
    for (const Keltrix::Host::Diagnostic& diagnostic : outcomes.diagnostics)
        std::cout << diagnostic.message << '\n';
    return outcomes.Pass() ? 0 : 1;
}
