# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT

# What a Debian package has beyond an installation: run by CPack before it builds the package.

set(root "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr")
set(doc "${root}/share/doc/vesper")
set(permissions OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)

function(compress file)
    execute_process(COMMAND gzip --best --no-name "${file}" COMMAND_ERROR_IS_FATAL ANY)
    file(CHMOD "${file}.gz" PERMISSIONS ${permissions})
endfunction()

execute_process(COMMAND strip --remove-section=.comment --remove-section=.note "${root}/lib/vesper/vesper"
    COMMAND_ERROR_IS_FATAL ANY)

# The package manager brings newer versions, so the program does not ask for them.
file(WRITE "${root}/lib/vesper/installed-by-package" "")
file(CHMOD "${root}/lib/vesper/installed-by-package" PERMISSIONS ${permissions})

string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
file(WRITE "${doc}/changelog"
    "vesper (${CPACK_PACKAGE_VERSION}) unstable; urgency=medium\n\n"
    "  * What is new stands in the release notes on ${CPACK_PACKAGE_HOMEPAGE_URL}\n\n"
    " -- ${CPACK_PACKAGE_CONTACT}  ${date}\n")
compress("${doc}/changelog")
compress("${root}/share/man/man1/vesper.1")
configure_file("${CPACK_VESPER_SOURCE}/copyright.in" "${doc}/copyright" @ONLY)
file(CHMOD "${doc}/copyright" PERMISSIONS ${permissions})
file(MAKE_DIRECTORY "${root}/share/lintian/overrides")
file(COPY_FILE "${CPACK_VESPER_SOURCE}/lintian-overrides" "${root}/share/lintian/overrides/vesper")
file(CHMOD "${root}/share/lintian/overrides/vesper" PERMISSIONS ${permissions})
