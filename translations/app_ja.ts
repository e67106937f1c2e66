<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja_JP" sourcelanguage="en">
<context>
    <name>ContextMenu</name>
    <message>
        <source>Resize</source>
        <translation>サイズ変更</translation>
    </message>
    <message>
        <source>Fixed</source>
        <translation>位置を固定</translation>
    </message>
    <message>
        <source>Topmost</source>
        <translation>最前面に表示</translation>
    </message>
    <message>
        <source>Move To</source>
        <translation>移動</translation>
    </message>
    <message>
        <source>Top-Right</source>
        <translation>右上</translation>
    </message>
    <message>
        <source>Top-Left</source>
        <translation>左上</translation>
    </message>
    <message>
        <source>Bottom-Right</source>
        <translation>右下</translation>
    </message>
    <message>
        <source>Bottom-Left</source>
        <translation>左下</translation>
    </message>
    <message>
        <source>Center at This Monitor</source>
        <translation>このモニターの中央</translation>
    </message>
    <message>
        <source>Preferences...</source>
        <translation>環境設定...</translation>
    </message>
    <message>
        <source>Settings...</source>
        <translation>設定...</translation>
    </message>
    <message>
        <source>About Vesper...</source>
        <translation>Vesper について...</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>終了</translation>
    </message>
</context>
<context>
    <name>VsAboutDialog</name>
    <message>
        <source>Version %1</source>
        <translation>バージョン %1</translation>
    </message>
    <message>
        <source>About Vesper</source>
        <translation>Vesper について</translation>
    </message>
    <message>
        <source>&quot;Marrowby Software End-User License&quot; applies to this software.
This software uses a dynamic link library of &quot;Qt&quot;.
Copyright (C) The Qt Company Ltd. and other contributors.
Qt&apos;s libraries are the files whose names begin with Qt or libQt and end in .dll, .dylib, .framework or .so.&lt;number&gt;.
GNU Lesser General Public License version 3 is applied to Qt.</source>
        <translation>このソフトウェアには「Marrowby Software End-User License」が適用されます。
このソフトウェアは「Qt」のダイナミックリンクライブラリーを使用しています。
Copyright (C) The Qt Company Ltd. and other contributors.
Qt のライブラリーは、名前が Qt または libQt で始まり、.dll、.dylib、.framework、.so.&lt;番号&gt; のいずれかで終わるファイルです。
Qt には GNU Lesser General Public License version 3 が適用されます。</translation>
    </message>
    <message>
        <source>Details...</source>
        <translation>詳細...</translation>
    </message>
    <message>
        <source>%1</source>
        <translation>%1</translation>
    </message>
</context>
<context>
    <name>VsLicenseDialog</name>
    <message>
        <source>License</source>
        <translation>ライセンス</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>コピー</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>閉じる</translation>
    </message>
</context>
<context>
    <name>VsManager</name>
    <message>
        <source>Resize</source>
        <translation>サイズ変更</translation>
    </message>
    <message>
        <source>Fixed</source>
        <translation>位置を固定</translation>
    </message>
    <message>
        <source>Topmost</source>
        <translation>最前面に表示</translation>
    </message>
    <message>
        <source>Show on Taskbar</source>
        <translation>タスクバーに表示</translation>
    </message>
    <message>
        <source>Settings...</source>
        <translation>設定...</translation>
    </message>
    <message>
        <source>About Vesper...</source>
        <translation>Vesper について...</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>終了</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>最小化</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>元に戻す</translation>
    </message>
    <message>
        <source>Move To</source>
        <translation>移動</translation>
    </message>
    <message>
        <source>Top-Right</source>
        <translation>右上</translation>
    </message>
    <message>
        <source>Top-Left</source>
        <translation>左上</translation>
    </message>
    <message>
        <source>Bottom-Right</source>
        <translation>右下</translation>
    </message>
    <message>
        <source>Bottom-Left</source>
        <translation>左下</translation>
    </message>
    <message>
        <source>Center at This Monitor</source>
        <translation>このモニターの中央</translation>
    </message>
    <message>
        <source>Vesper Update</source>
        <translation>Vesper の更新</translation>
    </message>
    <message>
        <source>A new version of Vesper is available.
Would you like to open a download site?</source>
        <translation>Vesper の新しいバージョンがあります。
ダウンロードサイトを開きますか?</translation>
    </message>
</context>
<context>
    <name>VsTheme</name>
    <message>
        <source>Dark Blue</source>
        <translation>ダークブルー</translation>
    </message>
    <message>
        <source>Dark Red</source>
        <translation>ダークレッド</translation>
    </message>
    <message>
        <source>Dark Green</source>
        <translation>ダークグリーン</translation>
    </message>
    <message>
        <source>Dark Yellow</source>
        <translation>ダークイエロー</translation>
    </message>
    <message>
        <source>Dark Gray</source>
        <translation>ダークグレー</translation>
    </message>
    <message>
        <source>Light Blue</source>
        <translation>ライトブルー</translation>
    </message>
    <message>
        <source>Light Red</source>
        <translation>ライトレッド</translation>
    </message>
    <message>
        <source>Light Green</source>
        <translation>ライトグリーン</translation>
    </message>
    <message>
        <source>Light Yellow</source>
        <translation>ライトイエロー</translation>
    </message>
    <message>
        <source>Light Gray</source>
        <translation>ライトグレー</translation>
    </message>
    <message>
        <source>Basic</source>
        <translation>ベーシック</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Vesper</source>
        <translation>Vesper</translation>
    </message>
</context>
</TS>
