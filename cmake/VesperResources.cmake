# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT

# Gives a program what the system shows of its file: on Windows the icon, the version and the manifest.
function(vesper_add_program_resources target)
    if(NOT WIN32)
        return()
    endif()
    set(source "${PROJECT_SOURCE_DIR}/packaging/windows")
    set(folder "${PROJECT_BINARY_DIR}/packaging/windows")
    set(vesper_manifest "${folder}/vesper.manifest")
    string(REPLACE "." "," vesper_version_numbers "${PROJECT_VERSION}")
    configure_file("${source}/vesper.manifest.in" "${vesper_manifest}" @ONLY)
    configure_file("${source}/vesper.rc.in" "${folder}/vesper.rc" @ONLY)
    set_source_files_properties("${folder}/vesper.rc" PROPERTIES
        OBJECT_DEPENDS "${source}/vesper.ico;${vesper_manifest}")
    target_sources(${target} PRIVATE "${folder}/vesper.rc")
endfunction()
