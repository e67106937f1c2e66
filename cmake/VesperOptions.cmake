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
if(VESPER_SANITIZE)
    target_compile_options(vesper_options INTERFACE
        -fsanitize=address,undefined,float-cast-overflow
        -fno-sanitize-recover=undefined,float-cast-overflow -fno-omit-frame-pointer)
    target_link_options(vesper_options INTERFACE -fsanitize=address,undefined)
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
