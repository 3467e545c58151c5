# SPDX-FileCopyrightText: 2026 The VELM authors
# SPDX-License-Identifier: MIT
# What every target of the project shares: the warnings, and how a folder becomes a library
# and a test file becomes a test.

option(VELM_WARNINGS_AS_ERRORS "Treat every compiler warning as an error" OFF)
option(VELM_UNITY "Compile the files of a folder together" OFF)

add_library(velm_warnings INTERFACE)
target_compile_options(velm_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Wold-style-cast
    -Woverloaded-virtual -Wnull-dereference -Wcast-align -Wformat=2
    $<$<BOOL:${VELM_WARNINGS_AS_ERRORS}>:-Werror>)
target_compile_definitions(velm_warnings INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING
    QT_NO_FOREACH QT_DISABLE_DEPRECATED_BEFORE=0x060400)

# From which memory on, in KiB, g++ looks for what it no longer needs. It does so early, and where
# headers are precompiled it walks through all of them each time: a sixth of the time of a test.
add_compile_options($<$<CXX_COMPILER_ID:GNU>:--param=ggc-min-heapsize=524288>)

# velm_library(<folder> SOURCES <files...> LINKS <libraries...>)
# The static library velm_<folder>; its headers are included as "<folder>/<File>.h".
function(velm_library folder)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS")
    add_library(velm_${folder} STATIC ${arg_SOURCES})
    target_include_directories(velm_${folder} PUBLIC "${PROJECT_SOURCE_DIR}/src")
    target_link_libraries(velm_${folder} PUBLIC ${arg_LINKS} PRIVATE velm_warnings)
    velm_compile_together(velm_${folder})
endfunction()

# velm_compile_together(<target>)
# With VELM_UNITY what its files include is read once for all of them, which is most of what
# compiling takes. So names in the anonymous namespaces of a folder differ from each other. That a
# file lacks a header that another one has included shows without VELM_UNITY, and in tst_layers for
# the most part.
function(velm_compile_together target)
    if(VELM_UNITY)
        velm_meta_objects_of_headers(${target})
        set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 0)
    endif()
endfunction()

# velm_meta_objects_of_headers(<target>)
# What AUTOMOC does, in files that are compiled together with the others; it keeps its own apart.
# Which headers have meta objects is seen when the build is configured.
function(velm_meta_objects_of_headers target)
    set(folder "${CMAKE_CURRENT_BINARY_DIR}/${target}_moc")
    get_target_property(sources ${target} SOURCES)
    list(FILTER sources INCLUDE REGEX "\\.h$")
    foreach(header IN LISTS sources)
        file(STRINGS ${header} marked REGEX "^ *Q_(OBJECT|GADGET|NAMESPACE)")
        if(marked)
            get_filename_component(name ${header} NAME_WE)
            qt_generate_moc(${header} "${folder}/moc_${name}.cpp")
            target_sources(${target} PRIVATE "${folder}/moc_${name}.cpp")
        endif()
    endforeach()
    set_target_properties(${target} PROPERTIES AUTOMOC OFF)
endfunction()

# velm_precompiled(<target> LINKS <libraries...> HEADERS <headers...>)
# The headers, compiled once for the tests that link the same modules of the toolkit. The tests
# include what they use all the same: -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON builds without.
function(velm_precompiled target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LINKS;HEADERS")
    file(CONFIGURE OUTPUT "${target}.cpp" CONTENT "")
    add_library(${target} OBJECT "${CMAKE_CURRENT_BINARY_DIR}/${target}.cpp")
    set_target_properties(${target} PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
    target_link_libraries(${target} PRIVATE ${arg_LINKS} velm_warnings)
    target_precompile_headers(${target} PRIVATE ${arg_HEADERS})
    velm_compile_quickly(${target})
    velm_let_ccache_see_precompiled(${target})
endfunction()

# velm_compile_quickly(<target>)
# Tests are compiled more often than they run, and what takes time in them is what they test. Some
# warnings need optimisation: of the program itself they are seen. Where the sanitizers watch, each
# access of a test is left to AddressSanitizer; UndefinedBehaviorSanitizer looks at the rest. Inline
# functions of the program that a test calls may be linked as they are compiled here.
function(velm_compile_quickly target)
    target_compile_options(${target} PRIVATE
        $<$<CONFIG:Debug>:-O0> -fno-sanitize=null,alignment,object-size,vptr)
endfunction()

# Where mold is, each of the many tests is linked in a third of the time.
include(CheckLinkerFlag)
check_linker_flag(CXX -fuse-ld=mold VELM_HAS_MOLD)

# velm_link_quickly(<target>)
function(velm_link_quickly target)
    if(VELM_HAS_MOLD)
        target_link_options(${target} PRIVATE -fuse-ld=mold)
    endif()
endfunction()

# What g++ leaves in preprocessed text, and clang++ out of the precompiled headers, for ccache to
# tell one from another.
function(velm_let_ccache_see_precompiled target)
    target_compile_options(${target} PRIVATE
        $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>
        "$<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>")
endfunction()

# velm_use_precompiled(<target> <libraries that it links...>)
# With the toolkit's test library, whose header is among those that are precompiled.
function(velm_use_precompiled target)
    velm_compile_quickly(${target})
    target_link_libraries(${target} PRIVATE Qt6::Test)
    # Linked with the network and no window it fits neither of the two.
    if("${ARGN}" MATCHES "velm_start")
        return()
    endif()
    set(precompiled velm_precompiled_core)
    set(folders "widgets|grid|devices|control|imageviews|exchange|blocks|views|app")
    if("${ARGN}" MATCHES "velm_(${folders})|window_fixture")
        set(precompiled velm_precompiled_widgets)
        # The toolkit's test header reads otherwise where it is linked, as it is by the window.
        target_link_libraries(${target} PRIVATE Qt6::Network)
    endif()
    target_precompile_headers(${target} REUSE_FROM ${precompiled})
    velm_let_ccache_see_precompiled(${target})
endfunction()

# velm_test_meta_objects(<name>)
# <name>.moc, which <name>.cpp includes: what AUTOMOC would do, at a tenth of its time.
function(velm_test_meta_objects name)
    set(folder "${CMAKE_CURRENT_BINARY_DIR}/${name}_moc")
    qt_generate_moc(${name}.cpp "${folder}/${name}.moc")
    target_sources(${name} PRIVATE "${folder}/${name}.moc")
    target_include_directories(${name} PRIVATE "${folder}")
    set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
endfunction()

# All tests that measure memory, which a sanitizer would spoil.
add_custom_target(velm_memory_tests)

# velm_test(<name> [MEASURES_MEMORY] SOURCES <files...> LINKS <libraries...>)
# A QtTest program that ctest runs offscreen, away from the user's own files. One of the files is
# <name>.cpp, with all the classes of the program that have signals or slots.
function(velm_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "MEASURES_MEMORY" "" "SOURCES;LINKS")
    add_executable(${name} ${arg_SOURCES})
    velm_test_meta_objects(${name})
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
    target_link_libraries(${name} PRIVATE ${arg_LINKS} velm_warnings)
    velm_use_precompiled(${name} ${arg_LINKS})
    velm_link_quickly(${name})
    add_test(NAME ${name} COMMAND ${name})
    set(environment
        QT_QPA_PLATFORM=offscreen
        LC_ALL=C.UTF-8
        SHELL=/bin/bash
        "HOME=${CMAKE_BINARY_DIR}/test-home"
        "XDG_RUNTIME_DIR=${CMAKE_BINARY_DIR}/test-runtime")
    set_tests_properties(${name} PROPERTIES
        TIMEOUT 300
        ENVIRONMENT "${environment}")
    if(arg_MEASURES_MEMORY)
        add_dependencies(velm_memory_tests ${name})
        set_tests_properties(${name} PROPERTIES LABELS memory)
    endif()
endfunction()

# velm_test_long(<name>)
# The test takes longest and is begun before the others, which run beside it. ctest knows of itself
# only what has run in the same folder before. It may last six hours: variables make it longer, for
# 10,000 runs most of an hour, and more with sanitizers. A test function that hangs is ended by the
# toolkit after five minutes, unless QTEST_FUNCTION_TIMEOUT tells it otherwise.
function(velm_test_long name)
    set_tests_properties(${name} PROPERTIES COST 100 TIMEOUT 21600)
endfunction()

# velm_test_parts(<name> SOURCES <files...> LINKS <libraries...>)
# What several tests share beside the program, compiled once; they link it by its name.
function(velm_test_parts name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS")
    add_library(${name} OBJECT ${arg_SOURCES})
    set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
    target_link_libraries(${name} PRIVATE ${arg_LINKS} velm_warnings)
    velm_use_precompiled(${name} ${arg_LINKS})
endfunction()

# velm_test_again(<name> <suffix> <variable=value>)
# Runs the test a second time, as <name>_<suffix>, with one more variable in its environment.
function(velm_test_again name suffix variable)
    get_test_property(${name} ENVIRONMENT environment)
    add_test(NAME ${name}_${suffix} COMMAND ${name})
    set_tests_properties(${name}_${suffix} PROPERTIES
        TIMEOUT 300
        ENVIRONMENT "${environment};${variable}")
endfunction()
