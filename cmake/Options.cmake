# What every target of the project is compiled with. Link `ostravelin_options` privately.
add_library(ostravelin_options INTERFACE)
target_include_directories(ostravelin_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(ostravelin_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
if(OSTRAVELIN_WARNINGS_ARE_ERRORS) # a newer compiler's must not keep a user from building
    target_compile_options(ostravelin_options INTERFACE -Werror)
endif()
target_compile_definitions(ostravelin_options INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS)
if(OSTRAVELIN_FUZZ)
    target_compile_options(ostravelin_options INTERFACE
        -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all)
    target_link_options(ostravelin_options INTERFACE -fsanitize=address,undefined)
endif()
if(OSTRAVELIN_SANITIZE)
    target_compile_options(ostravelin_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(ostravelin_options INTERFACE -fsanitize=address,undefined)
endif()
