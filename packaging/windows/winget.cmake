# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT

# Writes the winget manifest of the installer that CPack has just made: three files in the folder
# "winget" beside it, ready to be submitted to a package source.

set(schema 1.6.0)
string(REGEX REPLACE "[^A-Za-z0-9]" "" publisher "${CPACK_PACKAGE_VENDOR}")
string(REGEX REPLACE "Inc$" "" publisher "${publisher}")
set(identifier "${publisher}.Vesper")

function(write_manifest type suffix lines)
    string(TOLOWER "${type}" kind)
    file(WRITE "${CPACK_PACKAGE_DIRECTORY}/winget/${identifier}${suffix}.yaml"
        "# yaml-language-server: $schema=https://aka.ms/winget-manifest.${kind}.${schema}.schema.json\n"
        "PackageIdentifier: ${identifier}\n"
        "PackageVersion: ${CPACK_PACKAGE_VERSION}\n"
        "${lines}"
        "ManifestType: ${type}\n"
        "ManifestVersion: ${schema}\n")
endfunction()

set(installers ${CPACK_PACKAGE_FILES})
list(FILTER installers INCLUDE REGEX "\\.exe$")
if(NOT installers)
    return() # this run made the archive
endif()
list(GET installers 0 installer)
cmake_path(GET installer FILENAME name)
file(SHA256 "${installer}" sum)
string(TOUPPER "${sum}" sum)

write_manifest(version "" "DefaultLocale: en-US\n")
write_manifest(installer .installer "\
InstallerType: nullsoft
Scope: user
UpgradeBehavior: install
InstallModes:
- interactive
- silent
ProductCode: Vesper
Installers:
- Architecture: x64
  InstallerUrl: ${CPACK_PACKAGE_HOMEPAGE_URL}download/${name}
  InstallerSha256: ${sum}
")
write_manifest(defaultLocale .locale.en-US "\
PackageLocale: en-US
Publisher: ${CPACK_PACKAGE_VENDOR}
PublisherUrl: ${CPACK_PACKAGE_HOMEPAGE_URL}
PackageName: Vesper
License: Marrowby Software End-User License (source: MIT)
ShortDescription: ${CPACK_PACKAGE_DESCRIPTION_SUMMARY}
Tags:
- clock
- desktop
")
