# SPDX-License-Identifier: MIT
# What every target of the project is compiled with: link `tarnvik_options` and nothing else is needed.
add_library(tarnvik_options INTERFACE)

# Includes are written from the repository root; a folder of ours is never itself on the include path, because
# TarnvikControl/QDialog would then hide Qt's header of that name.
target_include_directories(tarnvik_options INTERFACE ${PROJECT_SOURCE_DIR})

target_compile_definitions(tarnvik_options INTERFACE
    QT_NO_CAST_TO_ASCII # a silent conversion to bytes loses letters
    QT_NO_FOREACH
    QT_DISABLE_DEPRECATED_BEFORE=0x060400) # the oldest Qt that we support

if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(tarnvik_options INTERFACE
        -Wall -Wextra -Wpedantic
        -Wshadow      # a hidden name reads as the outer one
        -Wconversion) # file formats and counters: no silent narrowing
elseif(MSVC)
    target_compile_options(tarnvik_options INTERFACE /W4 /permissive- /utf-8)
endif()

# What users run is hardened as Debian's packages are (scripts/check-hardening looks at the built files): overwritten
# return addresses are noticed; on Linux, whose libraries can, buffer functions are checked, and there are no writable jump
# tables. Windows' compiler makes everything movable in memory and data not executable by itself.
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    # Not when linking: for mingw the option would mean one more library, and the C runtime has what is needed.
    target_compile_options(tarnvik_options INTERFACE $<$<CONFIG:Release>:-fstack-protector-strong>)
endif()
if(NOT WIN32)
    target_compile_definitions(tarnvik_options INTERFACE $<$<CONFIG:Release>:_FORTIFY_SOURCE=2>)
    target_link_options(tarnvik_options INTERFACE $<$<CONFIG:Release>:LINKER:-z,relro,-z,now>)
endif()

# Address and undefined-behaviour sanitizers (preset `asan`). The first report ends the program with an error,
# so that a test cannot pass over it.
option(TARNVIK_SANITIZE "Build with address and undefined-behaviour sanitizers" OFF)
if(TARNVIK_SANITIZE)
    target_compile_definitions(tarnvik_options INTERFACE TARNVIK_SANITIZE)
    target_compile_options(tarnvik_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(tarnvik_options INTERFACE -fsanitize=address,undefined)
endif()

if(WIN32)
    # No macros min and max, and of the system's headers what we use.
    target_compile_definitions(tarnvik_options INTERFACE NOMINMAX WIN32_LEAN_AND_MEAN)
endif()

# The ending of the sources that exist once per system.
if(WIN32)
    set(PLATFORM_SUFFIX windows)
else()
    set(PLATFORM_SUFFIX linux)
endif()

# What the programs of a build are told of it are paths of the machine that runs them: Wine shows this one's as drive Z.
set(WINE_DRIVE "")
if(WIN32 AND CMAKE_CROSSCOMPILING)
    set(WINE_DRIVE "Z:")
endif()

# Qt Test, for whatever uses its macros: link `tarnvik_qt_test` after find_package(Qt6 COMPONENTS Test).
add_library(tarnvik_qt_test INTERFACE)
target_link_libraries(tarnvik_qt_test INTERFACE Qt6::Test)
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    # Qt defines them for the place of a test's data, which we do not use; they would make precompiled headers those of one
    # folder. The last one lets ccache look into what includes such headers.
    target_compile_options(tarnvik_qt_test INTERFACE -UQT_TESTCASE_BUILDDIR -UQT_TESTCASE_SOURCEDIR
        $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
endif()
if(Qt6_VERSION VERSION_GREATER_EQUAL 6.8 AND CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    # The waiting macros of that Qt's tests count milliseconds of 64 bits in an int.
    target_compile_options(tarnvik_qt_test INTERFACE -Wno-conversion)
endif()
