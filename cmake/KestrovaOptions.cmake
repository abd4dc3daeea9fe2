# SPDX-License-Identifier: GPL-3.0-or-later
# Warnings, sanitizers and paths, as one interface target that every target of the project links.
option(KESTROVA_WERROR "Treat warnings as errors" OFF)
set(KESTROVA_SANITIZE "" CACHE STRING "Comma-separated list for -fsanitize")

add_library(kestrova_options INTERFACE)
target_compile_options(kestrova_options INTERFACE
    -Wall -Wextra -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual
    $<$<BOOL:${KESTROVA_WERROR}>:-Werror>
    # __FILE__ (log lines, assertions) is relative to the repository.
    -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=
    -ffile-prefix-map=${PROJECT_BINARY_DIR}/=build/)
target_compile_definitions(kestrova_options INTERFACE
    QT_NO_CAST_TO_ASCII QT_DEPRECATED_WARNINGS QT_DISABLE_DEPRECATED_BEFORE=0x050F00
    # The race check runs debug builds. libstdc++'s short cut for the last owner of a shared pointer is a plain write
    # that race checkers take for a race; so it takes the long way, all of atomic operations.
    $<$<CONFIG:Debug>:_GLIBCXX_TSAN=1>)
if(KESTROVA_SANITIZE)
    target_compile_options(kestrova_options INTERFACE
        -fsanitize=${KESTROVA_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(kestrova_options INTERFACE -fsanitize=${KESTROVA_SANITIZE})
endif()
