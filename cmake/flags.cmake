# Compiler settings of every target here; not installed.
add_library(kesto_flags INTERFACE)
target_compile_features(kesto_flags INTERFACE cxx_std_20 c_std_99)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(UNIX AND NOT APPLE)
    set(CMAKE_INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")  # installed programs find the library, moved or not
endif()

if(MSVC)
    target_compile_options(kesto_flags INTERFACE /W4 /utf-8 /fp:precise)
else()
    # Contraction into fused operations would change results from one processor to the next.
    target_compile_options(kesto_flags INTERFACE
        -ffp-contract=off -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
    if(KESTO_WARNINGS_AS_ERRORS)
        target_compile_options(kesto_flags INTERFACE -Werror)
    endif()
    if(KESTO_SANITIZE)
        target_compile_options(kesto_flags INTERFACE
            -fsanitize=${KESTO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(kesto_flags INTERFACE -fsanitize=${KESTO_SANITIZE})
    endif()
endif()
