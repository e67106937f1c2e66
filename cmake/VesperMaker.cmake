# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT

# Who makes this build: the one place to change for another maker. The defaults stand on a name
# that is reserved for examples, so an unconfigured build can reach nobody.
set(VESPER_MAKER_NAME "Marrowby Inc." CACHE STRING
    "Name of the maker, as the packages have it")
set(VESPER_MAKER_CONTACT "support@marrowby.example" CACHE STRING
    "Mail address of who looks after the packages")
set(VESPER_MAKER_DOMAIN "marrowby.example" CACHE STRING
    "Organisation domain; also the name of the folder that holds the settings folder")
set(VESPER_MAKER_WEB_SITE "https://www.marrowby.example/" CACHE STRING
    "Web site that the program opens, an https address")
set(VESPER_MAKER_UPDATE_HOST "update.marrowby.example" CACHE STRING
    "Host name of the update service")
set(VESPER_MAKER_NOTICE "Copyright (C) 2026 Marrowby Inc." CACHE STRING
    "Copyright notice that the program shows")

configure_file(config/maker.h.in generated/config/maker.h @ONLY)

# The site of the update service is the maker's, too.
set(VESPER_UPDATE_SITE "${PROJECT_BINARY_DIR}/packaging/vesper-update.conf")
configure_file(packaging/update-service/vesper-update.conf.in "${VESPER_UPDATE_SITE}" @ONLY)
