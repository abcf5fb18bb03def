// A small bundle for check_image.py: compiled and linked for macOS, without headers or libraries.
extern "C" {
extern char offeredText[];
void throwSeven();

extern int order;
int order = 0;
extern int zeros[5000];
int zeros[5000];
extern int number;
int number = 5;

/** Pointers into the bundle, to an import, and to the fourth byte of an import. */
struct Pointers {
    int* toNumber;
    const char* toText;
    const char* beyond;
};
extern const Pointers constants;
const Pointers constants = {&number, offeredText, offeredText + 4};
extern Pointers variables;
Pointers variables = {zeros + 4999, offeredText, offeredText};

const Pointers* getConstants()
{
    return &constants;
}

const Pointers* getVariables()
{
    return &variables;
}

int getOrder()
{
    return order;
}

/** Saves registers, and an exception passes through it. */
__attribute__((noinline)) int passOn(int a, int b, int c)
{
    const int sum = a * b + c;
    throwSeven();
    return sum + a + b + c;
}

int catchSeven(int a, int b, int c)
{
    const int product = a * b * c;
    try {
        return passOn(a, b, c);
    } catch (int thrown) {
        return thrown + product;
    }
}

__attribute__((constructor)) void first()
{
    order = order * 10 + 1;
}

__attribute__((constructor)) void second()
{
    order = order * 10 + 2;
}
}
