/// Code pages as each system names them.
#pragma once

#include "io/code_page.hpp"

namespace kesto::test {

#if defined(_WIN32)
inline constexpr unsigned utf8Page = 65001;
inline constexpr unsigned latinPage = 28591;
inline constexpr unsigned chinesePage = 936;
inline constexpr unsigned unknownPage = 4711;
#else
inline constexpr const char* utf8Page = "UTF-8";
inline constexpr const char* latinPage = "ISO-8859-1";
inline constexpr const char* chinesePage = "GB18030";
inline constexpr const char* unknownPage = "no such code page";
#endif

}  // namespace kesto::test
