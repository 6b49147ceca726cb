# The pages of the interface, by Doxygen, with every warning an error: `cmake --build BUILD --target reference`.
find_program(KESTO_DOXYGEN doxygen)
if(KESTO_DOXYGEN)
    set(KESTO_REFERENCE_DIR ${PROJECT_BINARY_DIR}/reference)
    configure_file(docs/Doxyfile.in Doxyfile @ONLY)
    add_custom_target(reference COMMAND ${KESTO_DOXYGEN} ${PROJECT_BINARY_DIR}/Doxyfile VERBATIM
        COMMENT "Writing ${KESTO_REFERENCE_DIR}/html/index.html")
endif()
