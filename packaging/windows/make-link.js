// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// cscript make-link.js LINK TARGET: writes a shell link without arguments, as other programs do.
var link = WScript.CreateObject("WScript.Shell").CreateShortcut(WScript.Arguments(0));
link.TargetPath = WScript.Arguments(1);
link.Save();
