#include <cstring>

bool Passes(double utilisation);
bool IsLong(double length);
int Halvings(int n);
const char* Name(const char* given);

// Says nothing of a length of 12 m, and nothing of the name that is left empty.
int main()
{
    const bool limit = Passes(1.0) && !Passes(1.001) && Passes(0.5);
    const bool lengths = IsLong(20.0) && !IsLong(6.0);
    const bool halvings = Halvings(1) == 0 && Halvings(8) == 3;
    return limit && lengths && halvings && std::strcmp(Name("beam"), "beam") == 0 ? 0 : 1;
}
