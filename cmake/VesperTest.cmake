# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT

# vesper_add_test(KIND tst_name [SOURCES file...] LIBRARIES lib... [TIMEOUT seconds]
#     [ENVIRONMENT VARIABLE=VALUE...] [FUNCTIONS function...])
# adds one QtTest program tst_name.cpp as one test with the label KIND, only its FUNCTIONS if there
# are any. Kinds: unit and qml run on the offscreen platform, desktop on a real X server with a window
# manager and a compositor. In a cross-build for Windows every test gets the label windows and runs
# under Wine.
function(vesper_add_test kind name)
    cmake_parse_arguments(PARSE_ARGV 2 arg "" "TIMEOUT" "SOURCES;LIBRARIES;ENVIRONMENT;FUNCTIONS")
    qt_add_executable(${name} ${name}.cpp ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE vesper_options Qt6::Test ${arg_LIBRARIES})
    # The QTRY_ macros of Qt 6.8 make an int of a longer number, and a macro counts as ours. An option
    # of the file, since those of the target come before what it links.
    set_source_files_properties(${name}.cpp PROPERTIES COMPILE_OPTIONS -Wno-conversion)
    set(properties)
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 120)
    endif()
    if(CMAKE_CROSSCOMPILING)
        set(command "${PROJECT_SOURCE_DIR}/tools/windows/run-under-wine" $<TARGET_FILE:${name}>)
        set(label windows)
        # The tool-chain file lies in the folder of Qt for Windows.
        cmake_path(GET CMAKE_TOOLCHAIN_FILE PARENT_PATH qt_windows)
        list(APPEND arg_ENVIRONMENT "VESPER_QT_WINDOWS=${qt_windows}")
        # One prefix, one registry, one roaming folder: these tests run one after the other.
        list(APPEND properties RESOURCE_LOCK wine)
    elseif(kind STREQUAL desktop)
        set(command "${PROJECT_SOURCE_DIR}/tools/desktop/with-desktop" $<TARGET_FILE:${name}>)
        set(label desktop)
        # They look at what happens on time, so nothing else runs beside them.
        list(APPEND properties RUN_SERIAL TRUE)
    else()
        set(command ${name})
        set(label ${kind})
        list(APPEND arg_ENVIRONMENT QT_QPA_PLATFORM=offscreen)
    endif()
    add_test(NAME ${name} COMMAND ${command} ${arg_FUNCTIONS})
    # SIGTERM first: with-desktop and run-under-wine then end what they started. (A CMake before
    # 3.27 does not know these two and kills at once.)
    set_tests_properties(${name} PROPERTIES
        LABELS ${label} TIMEOUT ${arg_TIMEOUT} ENVIRONMENT "${arg_ENVIRONMENT}"
        TIMEOUT_SIGNAL_NAME SIGTERM TIMEOUT_SIGNAL_GRACE_PERIOD 10 ${properties})
endfunction()

# vesper_add_desktop_run(test variant VARIABLE=VALUE[;VARIABLE=VALUE...] [FUNCTIONS...])
# Runs a desktop test once more in another environment, under another window manager for example:
# they differ in what they do behind a program's back. Only the FUNCTIONS, if there are any.
function(vesper_add_desktop_run test variant environment)
    set(name ${test}_${variant})
    add_test(NAME ${name}
        COMMAND "${PROJECT_SOURCE_DIR}/tools/desktop/with-desktop" $<TARGET_FILE:${test}> ${ARGN})
    set_tests_properties(${name} PROPERTIES
        LABELS desktop TIMEOUT 300 ENVIRONMENT "${environment}" RUN_SERIAL TRUE
        TIMEOUT_SIGNAL_NAME SIGTERM TIMEOUT_SIGNAL_GRACE_PERIOD 10)
endfunction()
