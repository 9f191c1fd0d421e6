# Helpers shared by every folder: one static library per folder of src/, one
# GoogleTest executable per folder of tests/, all with the same warnings.

set(VIMBO_WARNINGS -Wall -Wextra -Werror)

add_library(vimbo_options INTERFACE)
target_compile_options(vimbo_options INTERFACE ${VIMBO_WARNINGS})
target_compile_features(vimbo_options INTERFACE cxx_std_20)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # GCC 12 reports impossible overlaps inside std::string's operator+ at -O2
    # (GCC bug 105329); the warning says nothing about our code.
    target_compile_options(vimbo_options INTERFACE -Wno-restrict)
endif()
if(VIMBO_SANITIZE)
    target_compile_options(vimbo_options INTERFACE
        -fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
    target_link_options(vimbo_options INTERFACE -fsanitize=address,undefined)
endif()
if(VIMBO_FUZZ)
    # Every library gets coverage instrumentation so the fuzzer can see into it.
    target_compile_options(vimbo_options INTERFACE -fsanitize=fuzzer-no-link,address,undefined)
    target_link_options(vimbo_options INTERFACE -fsanitize=address,undefined)
endif()

# vimbo_library(<name> SOURCES ... [DEPS ...] [PRIVATE_DEPS ...])
# Creates vimbo_<name> from the folder src/<name>. Include paths are relative to
# src/, so code includes "platform/zo_string.h" and never reaches across layers
# it does not link.
function(vimbo_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;DEPS;PRIVATE_DEPS" ${ARGN})
    set(target vimbo_${name})
    if(NOT ARG_SOURCES)
        # A layer whose code has not been written yet still exists, so the
        # layers above it can name it.
        add_library(${target} INTERFACE)
        target_include_directories(${target} INTERFACE ${PROJECT_SOURCE_DIR}/src)
        target_link_libraries(${target} INTERFACE vimbo_options ${ARG_DEPS})
        return()
    endif()
    add_library(${target} STATIC ${ARG_SOURCES})
    target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${target} PUBLIC vimbo_options ${ARG_DEPS} PRIVATE ${ARG_PRIVATE_DEPS})
endfunction()

find_package(GTest REQUIRED)
include(GoogleTest)

# vimbo_test(<name> SOURCES ... DEPS ... [LABELS ...])
# One GoogleTest program per folder of tests/. Tests find generated data and
# the examples through VIMBO_SOURCE_DIR / VIMBO_BINARY_DIR.
function(vimbo_test name)
    cmake_parse_arguments(ARG "" "" "SOURCES;DEPS;LABELS" ${ARGN})
    set(target test_${name})
    add_executable(${target} ${ARG_SOURCES})
    target_link_libraries(${target} PRIVATE vimbo_options ${ARG_DEPS} GTest::gtest GTest::gmock
                                            GTest::gtest_main)
    target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_compile_definitions(${target} PRIVATE
        VIMBO_SOURCE_DIR="${PROJECT_SOURCE_DIR}" VIMBO_BINARY_DIR="${PROJECT_BINARY_DIR}")
    set(labels unit)
    if(ARG_LABELS)
        set(labels ${ARG_LABELS})
    endif()
    if("playback" IN_LIST labels)
        # A playback program plays all its movies in one browser run before its
        # first case; as one CTest entry it keeps a parallel slot busy playing
        # instead of waiting on a sibling case's batch.
        add_test(NAME ${target} COMMAND ${target})
        set_tests_properties(${target} PROPERTIES LABELS "${labels}")
    else()
        gtest_discover_tests(${target} DISCOVERY_TIMEOUT 60 PROPERTIES LABELS "${labels}")
    endif()
endfunction()

# vimbo_embed(<target> <variable> <file>): compiles <file> into <target> as
# `extern const std::string_view <variable>`, so resources such as the HTML
# template travel inside the program byte for byte.
function(vimbo_embed target variable file)
    set(out ${CMAKE_CURRENT_BINARY_DIR}/embedded_${variable}.cpp)
    add_custom_command(
        OUTPUT ${out}
        COMMAND ${CMAKE_COMMAND} -DIN=${file} -DOUT=${out} -DVAR=${variable}
                -P ${PROJECT_SOURCE_DIR}/cmake/Embed.cmake
        DEPENDS ${file} ${PROJECT_SOURCE_DIR}/cmake/Embed.cmake
        VERBATIM)
    target_sources(${target} PRIVATE ${out})
endfunction()
