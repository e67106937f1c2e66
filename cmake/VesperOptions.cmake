# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT

# What every target of this project is compiled with.
add_library(vesper_options INTERFACE)
target_compile_features(vesper_options INTERFACE cxx_std_20)
target_include_directories(vesper_options INTERFACE
    "${PROJECT_SOURCE_DIR}" "${PROJECT_BINARY_DIR}/generated")
target_compile_definitions(vesper_options INTERFACE
    QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_DISABLE_DEPRECATED_UP_TO=0x060800)
target_compile_options(vesper_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion
    $<$<BOOL:${VESPER_DEVELOPER}>:-Werror>)
if(WIN32)
    target_compile_definitions(vesper_options INTERFACE UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN)
endif()

# What makes a fault harder to exploit. On Windows the linker puts a part of it into the file's header:
# moved addresses, also high ones, and data that cannot be run. The stack protector is an option of the
# compiler alone: told of it, GCC's linker for Windows takes a library of its own, libssp-0.dll, for
# what mingw-w64 has in the program already.
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)
target_compile_options(vesper_options INTERFACE -fstack-protector-strong)
if(WIN32)
    target_link_options(vesper_options INTERFACE -Wl,--dynamicbase,--high-entropy-va,--nxcompat)
else()
    target_link_options(vesper_options INTERFACE -Wl,-z,relro,-z,now)
endif()
if(NOT VESPER_SANITIZE AND NOT VESPER_SANITIZE_THREADS AND NOT VESPER_FUZZ)
    # With optimisation only; without it the C library says so in a warning.
    target_compile_options(vesper_options INTERFACE
        $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE> $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=3>)
endif()
if(VESPER_SANITIZE OR VESPER_FUZZ)
    target_compile_options(vesper_options INTERFACE
        -fsanitize=address,undefined,float-cast-overflow
        -fno-sanitize-recover=undefined,float-cast-overflow -fno-omit-frame-pointer)
    target_link_options(vesper_options INTERFACE -fsanitize=address,undefined)
endif()
if(VESPER_SANITIZE_THREADS)
    target_compile_options(vesper_options INTERFACE -fsanitize=thread -fno-omit-frame-pointer)
    target_link_options(vesper_options INTERFACE -fsanitize=thread)
endif()
if(VESPER_SANITIZE OR VESPER_SANITIZE_THREADS)
    target_compile_options(vesper_options INTERFACE -g1) # lines are all that a report names
endif()
if(VESPER_FUZZ)
    # The program's own assertions, and those of Qt's headers in its code, count as promises.
    target_compile_options(vesper_options INTERFACE -fsanitize=fuzzer-no-link)
    target_compile_definitions(vesper_options INTERFACE QT_FORCE_ASSERTS)
endif()

# Picks the file of a platform-dependent pair: STEM_win.cpp or STEM_OTHER.cpp.
function(vesper_platform_sources target other)
    foreach(stem IN LISTS ARGN)
        if(WIN32)
            target_sources(${target} PRIVATE ${stem}_win.cpp)
        else()
            target_sources(${target} PRIVATE ${stem}_${other}.cpp)
        endif()
    endforeach()
endfunction()
