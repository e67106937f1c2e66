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
    <name>ExpandButton</name>
    <message>
        <source>Expand</source>
        <translation>展開</translation>
    </message>
    <message>
        <source>Collapse</source>
        <translation>折りたたむ</translation>
    </message>
</context>
<context>
    <name>OpacitySlider</name>
    <message>
        <source>0%...Complity Transparent</source>
        <translation>0%...完全に透明</translation>
    </message>
    <message>
        <source>100%...Complity Opaque</source>
        <translation>100%...完全に不透明</translation>
    </message>
    <message>
        <source>Reset to Defualt Value</source>
        <translation>既定値に戻す</translation>
    </message>
</context>
<context>
    <name>Settings</name>
    <message>
        <source>Vesper Settings</source>
        <translation>Vesper の設定</translation>
    </message>
    <message>
        <source>100%</source>
        <translation>100%</translation>
    </message>
    <message>
        <source>0%</source>
        <translation>0%</translation>
    </message>
    <message>
        <source>300%</source>
        <translation>300%</translation>
    </message>
    <message>
        <source>10%</source>
        <translation>10%</translation>
    </message>
    <message>
        <source>Digital Clock</source>
        <translation>デジタル時計</translation>
    </message>
    <message>
        <source>12-Hour Format</source>
        <translation>12 時間表示</translation>
    </message>
    <message>
        <source>Date Display</source>
        <translation>日付を表示</translation>
    </message>
    <message>
        <source>Use Japanese Era</source>
        <translation>和暦を使用</translation>
    </message>
    <message>
        <source>Second Hand</source>
        <translation>秒針を表示</translation>
    </message>
    <message>
        <source>Topmost with Highest Priority</source>
        <translation>最優先で最前面に表示</translation>
    </message>
    <message>
        <source>Color Tone</source>
        <translation>色調</translation>
    </message>
    <message>
        <source>Use Default Background Image</source>
        <translation>既定の背景画像を使用</translation>
    </message>
    <message>
        <source>Overall Opacity</source>
        <translation>全体の不透明度</translation>
    </message>
    <message>
        <source>Collapse individual opacity settings</source>
        <translation>個別の不透明度の設定を折りたたむ</translation>
    </message>
    <message>
        <source>Expand individual opacity settings</source>
        <translation>個別の不透明度の設定を展開</translation>
    </message>
    <message>
        <source>Individual Opacity</source>
        <translation>個別の不透明度</translation>
    </message>
    <message>
        <source>Background</source>
        <translation>背景</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>画像</translation>
    </message>
    <message>
        <source>Face</source>
        <translation>文字盤</translation>
    </message>
    <message>
        <source>Hands</source>
        <translation>針</translation>
    </message>
    <message>
        <source>Digital Clock Background</source>
        <translation>デジタル時計の背景</translation>
    </message>
    <message>
        <source>Digital Clock Foreground</source>
        <translation>デジタル時計の文字</translation>
    </message>
    <message>
        <source>Date Background</source>
        <translation>日付の背景</translation>
    </message>
    <message>
        <source>Date Foreground</source>
        <translation>日付の文字</translation>
    </message>
    <message>
        <source>Logo</source>
        <translation>ロゴ</translation>
    </message>
    <message>
        <source>Collapse Individual Opacity</source>
        <translation>個別の不透明度を折りたたむ</translation>
    </message>
    <message>
        <source>Collapse individual Scaling factor</source>
        <translation>個別の拡大率を折りたたむ</translation>
    </message>
    <message>
        <source>Expand individual Scaling factor</source>
        <translation>個別の拡大率を展開</translation>
    </message>
    <message>
        <source>Individual Scaling Factor</source>
        <translation>個別の拡大率</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>日付</translation>
    </message>
    <message>
        <source>Collapse individual scaling factor</source>
        <translation>個別の拡大率を折りたたむ</translation>
    </message>
    <message>
        <source>Expand individual scaling factor</source>
        <translation>個別の拡大率を展開</translation>
    </message>
    <message>
        <source>Collapse Individual Scaling Factor</source>
        <translation>個別の拡大率を折りたたむ</translation>
    </message>
    <message>
        <source>Ignore Mouse Events</source>
        <translation>マウス操作を無視</translation>
    </message>
    <message>
        <source>Checking this box will disable mouse operations and prevent the context menu from being displayed.
In that case, use the menu from the task tray icon.</source>
        <translation>チェックを入れるとマウス操作が無効になり、コンテキストメニューも表示されなくなります。
その場合は、タスクトレイアイコンのメニューをお使いください。</translation>
    </message>
    <message>
        <source>Automatic Update Check</source>
        <translation>更新を自動的に確認</translation>
    </message>
    <message>
        <source>Maintain Position even when the Monitor is Disconnected</source>
        <translation>モニターが切断されても位置を維持</translation>
    </message>
    <message>
        <source>Logo Display</source>
        <translation>ロゴを表示</translation>
    </message>
    <message>
        <source>Automatically Start at Sign-In</source>
        <translation>サインイン時に自動的に起動</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>閉じる</translation>
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
