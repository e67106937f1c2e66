; SPDX-FileCopyrightText: 2026 Marrowby Inc.
; SPDX-License-Identifier: MIT

; The installer's own texts; the others come from NSIS, in both languages.

LangString startNow ${LANG_ENGLISH} "Start Vesper"
LangString startNow ${LANG_JAPANESE} "Vesper を起動する"
LangString stillThere ${LANG_ENGLISH} "Some files of the installed version cannot be removed. Close Vesper and try again."
LangString stillThere ${LANG_JAPANESE} "インストール済みの一部のファイルを削除できません。Vesper を終了してから、もう一度お試しください。"
