// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "app/application.h"

int main(int argc, char *argv[]) { return runVesper(argc, argv); }
