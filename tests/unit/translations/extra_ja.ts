<?xml version="1.0" encoding="utf-8"?>
<!-- SPDX-FileCopyrightText: 2026 Marrowby Inc. -->
<!-- SPDX-License-Identifier: MIT -->
<!DOCTYPE TS>
<TS version="2.1" language="ja_JP">
<context>
    <name>Probe</name>
    <message>
        <source>in both</source>
        <translation>隣</translation>
    </message>
    <message>
        <source>beside</source>
        <translation>隣のみ</translation>
    </message>
</context>
</TS>
