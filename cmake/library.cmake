# The exported functions, compiled once: for the shared library, and for programs that link the rooms beside them.
add_library(kesto_exports OBJECT
    core/exports.cpp
    geometry/exports.cpp
    alignment/exports.cpp
    profile/exports.cpp
    section/exports.cpp
    design/exports.cpp
    bulk/exports.cpp
    io/exports.cpp
    exchange/exports.cpp
    part/exports.cpp)
target_link_libraries(kesto_exports PUBLIC kesto_rooms PRIVATE kesto_flags)
target_compile_definitions(kesto_exports PUBLIC KESTO_ROAD_BUILDING)

# The shared library: rooms and exports, and what is installed with it.
add_library(kesto_road SHARED)
add_library(kesto::kesto_road ALIAS kesto_road)
target_link_libraries(kesto_road PRIVATE kesto_exports kesto_rooms kesto_flags)
target_include_directories(kesto_road INTERFACE
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
set_target_properties(kesto_road PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})

# exports.txt is the one list of exported names: what it does not name stays inside.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/exports.txt)
file(STRINGS ${PROJECT_SOURCE_DIR}/exports.txt kesto_exports)
if(WIN32)
    if(MINGW AND CMAKE_SIZEOF_VOID_P EQUAL 4)
        # Plain names for the functions "_name@bytes", as a list of names would give beside the others, not instead.
        target_link_options(kesto_road PRIVATE -Wl,--kill-at)
    else()
        list(JOIN kesto_exports "\n    " names)
        file(CONFIGURE OUTPUT kesto_road.def CONTENT "EXPORTS\n    ${names}\n")
        target_sources(kesto_road PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/kesto_road.def)
    endif()
    set_target_properties(kesto_road PROPERTIES PREFIX "")  # the same file name whatever the compiler
elseif(NOT APPLE)
    list(JOIN kesto_exports ";\n    " names)
    file(CONFIGURE OUTPUT kesto_road.map CONTENT "{\n  global:\n    ${names};\n  local:\n    *;\n};\n")
    target_link_options(kesto_road PRIVATE -Wl,--version-script,${CMAKE_CURRENT_BINARY_DIR}/kesto_road.map)
    set_target_properties(kesto_road PROPERTIES LINK_DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/kesto_road.map)
endif()

include(CMakePackageConfigHelpers)
install(TARGETS kesto_road EXPORT kesto_road
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/kesto_road ${PROJECT_BINARY_DIR}/include/kesto_road
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h" PATTERN "*.hpp")
set(kesto_cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/kesto_road)
install(EXPORT kesto_road NAMESPACE kesto:: DESTINATION ${kesto_cmake_dir} FILE kesto_road-config.cmake)
write_basic_package_version_file(kesto_road-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/kesto_road-config-version.cmake DESTINATION ${kesto_cmake_dir})
file(RELATIVE_PATH kesto_pc_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(cmake/kesto_road.pc.in kesto_road.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/kesto_road.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
