bool Passes(double utilisation) { return utilisation <= 1.0; }

bool IsLong(double length) { return length > 12.0; }

int Halvings(int n)
{
    int count = 0;
    while (n > 1) {
        n -= n / 2 + n % 2;
        count = count + 1;
    }
    return count;
}

const char* Name(const char* given) { return *given ? given : "unnamed"; }

long Length(const char* from, const char* to) { return to - from; }
