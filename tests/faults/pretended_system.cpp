// A code page that names have to be converted from and to, a disk that nobody waits for, and time standing still.
// The linker's --wrap leads calls of the library here.
#include <langinfo.h>
#include <unistd.h>

#include <ctime>

extern "C" char* __real_nl_langinfo(nl_item item);
extern "C" char* __wrap_nl_langinfo(nl_item item);
extern "C" int __wrap_fsync(int file);
extern "C" std::time_t __wrap_time(std::time_t* out);

char* __wrap_nl_langinfo(nl_item item) {
    static char latin[] = "ISO-8859-1";
    return item == CODESET ? latin : __real_nl_langinfo(item);
}

int __wrap_fsync(int) { return 0; }

std::time_t __wrap_time(std::time_t* out) {
    constexpr std::time_t now = 1'000'000'000;
    if (out != nullptr) *out = now;
    return now;
}
