// The smallest program against the installed package: a restraint and a catalogue section.
#include <iostream>

#include <keltrix/steel/Steel.h>

int main()
{
    Keltrix::Steel::CRestraint restraint;
    if (!restraint.SetDescription(L"pinned")) return 1;
    const Keltrix::CSection section(L"UB 457x191x67");
    std::wcout << restraint.Description().GetString() << L"\n"
               << section.Component(0).Dimension(0.0, Keltrix::CSecGeom::DEPTH) * 1000.0 << L" mm deep\n";
}
