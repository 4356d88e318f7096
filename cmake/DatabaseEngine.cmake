# The engine of the task database with its ciphers, linked in: as libraries of their own they would
# take a twentieth of the program's start. None of their names leave the program, as the toolkit
# loads the same ciphers, in whatever version, for https.
pkg_check_modules(SQLCIPHER REQUIRED IMPORTED_TARGET sqlcipher)
add_library(database_engine INTERFACE)
if(WIN32)
    target_link_libraries(database_engine INTERFACE PkgConfig::SQLCIPHER) # there only to be linked in
else()
    find_library(SQLCIPHER_ARCHIVE libsqlcipher.a REQUIRED)
    find_library(CIPHERS_ARCHIVE libcrypto.a REQUIRED)
    target_include_directories(database_engine SYSTEM INTERFACE ${SQLCIPHER_INCLUDE_DIRS})
    target_link_libraries(database_engine INTERFACE ${SQLCIPHER_ARCHIVE} ${CIPHERS_ARCHIVE})
    target_link_options(database_engine INTERFACE
        LINKER:--exclude-libs,libsqlcipher.a:libcrypto.a)
endif()
