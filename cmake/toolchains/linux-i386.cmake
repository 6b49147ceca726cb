# 32-bit x86 with the 64-bit system's gcc: floating point in SSE registers, where a double has 64 bits as elsewhere.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_COMPILER gcc)
set(CMAKE_CXX_COMPILER g++)
# The kernel's headers are the same for both; the package that links them for -m32 excludes every cross compiler.
set(flags "-m32 -msse2 -mfpmath=sse -idirafter /usr/include/x86_64-linux-gnu")
set(CMAKE_C_FLAGS_INIT "${flags}")
set(CMAKE_CXX_FLAGS_INIT "${flags}")
include(${CMAKE_CURRENT_LIST_DIR}/search_prefix_only.cmake)
