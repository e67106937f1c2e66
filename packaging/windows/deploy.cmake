# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT

# Puts beside the installed program exactly what it needs of Qt: the QML modules that the documents
# import, directly or not, the plug-ins named here, and every library that one of these needs.
# Run at installation, with
#   vesper_folder      where the program was installed
#   vesper_documents   the folder of the QML documents
#   vesper_qt          Qt for Windows
#   vesper_scanner     its qmlimportscanner, as it runs on the build machine
#   vesper_objdump     reads what a library needs

set(plugins
    imageformats/qsvg.dll # the artwork
    platforms/qwindows.dll
    tls/qschannelbackend.dll) # the update check

# Styles of Qt Quick Controls that nothing asks for. The settings window stands on FluentWinUI3, that on
# Fusion and that on Basic; the one called Windows is what Qt takes there where no other is named.
set(unused_modules "^QtQuick\\.Controls\\.(Imagine|Material|Universal|iOS|macOS)(\\.impl)?$")

# A module whose qmldir prefers the resources of its plug-in needs no document beside it.
function(copy_module relative_path)
    set(source "${vesper_qt}/qml/${relative_path}")
    set(target "${vesper_folder}/qml/${relative_path}")
    file(STRINGS "${source}/qmldir" preferred REGEX "^prefer :/")
    if(preferred)
        file(GLOB files LIST_DIRECTORIES FALSE "${source}/qmldir" "${source}/*.dll")
        file(COPY ${files} DESTINATION "${target}")
    else()
        file(COPY "${source}/" DESTINATION "${target}" PATTERN *.qmltypes EXCLUDE)
    endif()
endfunction()

function(copy_modules)
    execute_process(
        COMMAND "${vesper_scanner}" -rootPath "${vesper_documents}" -importPath "${vesper_qt}/qml"
        OUTPUT_VARIABLE imports
        COMMAND_ERROR_IS_FATAL ANY)
    string(JSON count LENGTH "${imports}")
    math(EXPR last "${count} - 1")
    foreach(i RANGE ${last})
        string(JSON name GET "${imports}" ${i} name)
        string(JSON path ERROR_VARIABLE missing GET "${imports}" ${i} relativePath)
        if(missing OR name MATCHES "${unused_modules}")
            continue()
        endif()
        copy_module("${path}")
    endforeach()
endfunction()

function(copy_plugins)
    foreach(plugin IN LISTS plugins)
        cmake_path(GET plugin PARENT_PATH kind)
        file(COPY "${vesper_qt}/plugins/${plugin}" DESTINATION "${vesper_folder}/plugins/${kind}")
    endforeach()
endfunction()

# Libraries that do not lie beside Qt's are Windows' own. (CMake's search for run-time dependencies
# makes the names small letters, which finds nothing on the file systems of a cross-build.)
function(copy_libraries)
    file(GLOB_RECURSE unread "${vesper_folder}/*.exe" "${vesper_folder}/*.dll")
    while(unread)
        list(POP_FRONT unread file)
        execute_process(COMMAND "${vesper_objdump}" -p "${file}"
            OUTPUT_VARIABLE headers ERROR_VARIABLE error COMMAND_ERROR_IS_FATAL ANY)
        string(REGEX MATCHALL "DLL Name: [^\r\n]+" needed "${headers}")
        list(TRANSFORM needed REPLACE "DLL Name: " "")
        foreach(name IN LISTS needed)
            if(EXISTS "${vesper_qt}/bin/${name}" AND NOT EXISTS "${vesper_folder}/${name}")
                file(COPY "${vesper_qt}/bin/${name}" DESTINATION "${vesper_folder}")
                list(APPEND unread "${vesper_folder}/${name}")
            endif()
        endforeach()
    endwhile()
endfunction()

copy_modules()
copy_plugins()
copy_libraries()
