# Windows with mingw-w64, for one processor; programs run in Wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR ${processor})
set(CMAKE_C_COMPILER ${processor}-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER ${processor}-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER ${processor}-w64-mingw32-windres)
# The compiler's own libraries go into the file, so that it runs where there is no such compiler.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)  # a program finds a DLL beside itself
if(processor STREQUAL x86_64)
    set(CMAKE_CROSSCOMPILING_EMULATOR wine)
endif()
include(${CMAKE_CURRENT_LIST_DIR}/search_prefix_only.cmake)
