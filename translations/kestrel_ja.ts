<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja">
<context>
    <name>AboutDialog</name>
    <message>
        <source>Version %1</source>
        <translation>バージョン %1</translation>
    </message>
    <message>
        <source>System information</source>
        <translation>システム情報</translation>
    </message>
</context>
<context>
    <name>FeedSignature</name>
    <message>
        <source>Could not create a temporary folder for the signature check: %1</source>
        <translation>署名の確認に使う一時フォルダーを作成できませんでした: %1</translation>
    </message>
    <message>
        <source>it is signed by another key than the application&apos;s release key</source>
        <translation>アプリケーションのリリース鍵ではなく、別の鍵で署名されています</translation>
    </message>
    <message>
        <source>its signature does not match its content</source>
        <translation>署名が内容と一致しません</translation>
    </message>
    <message>
        <source>its signature is not a valid signature</source>
        <translation>署名が有効な署名ではありません</translation>
    </message>
    <message>
        <source>Could not write &quot;%1&quot; for the signature check: %2</source>
        <translation>署名の確認のために「%1」を書き込めませんでした: %2</translation>
    </message>
    <message>
        <source>gpgv (%1) could not be started</source>
        <translation>gpgv (%1) を起動できませんでした</translation>
    </message>
    <message>
        <source>gpgv did not answer within %1 seconds</source>
        <translation>gpgv が %1 秒以内に応答しませんでした</translation>
    </message>
</context>
<context>
    <name>FormatTableModel</name>
    <message>
        <source>Type</source>
        <translation>種類</translation>
    </message>
    <message>
        <source>ID.</source>
        <translation>ID</translation>
    </message>
    <message>
        <source>Resolution</source>
        <translation>解像度</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>サイズ</translation>
    </message>
</context>
<context>
    <name>IdentifierDialog</name>
    <message>
        <source>Machine identifier</source>
        <translation>マシン識別子</translation>
    </message>
    <message>
        <source>The identifier of this computer:</source>
        <translation>このコンピューターの識別子:</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>コピー(&amp;C)</translation>
    </message>
    <message>
        <source>Copied to the clipboard.</source>
        <translation>クリップボードにコピーしました。</translation>
    </message>
</context>
<context>
    <name>Identity</name>
    <message>
        <source>simple downloader from YouTube, full version is on Loomfield site</source>
        <translation>シンプルな YouTube ダウンローダー。完全版は Loomfield のサイトで入手できます</translation>
    </message>
</context>
<context>
    <name>InstallerDownload</name>
    <message>
        <source>Could not save the installer as &quot;%1&quot;: %2</source>
        <translation>インストーラーを「%1」として保存できませんでした: %2</translation>
    </message>
    <message>
        <source>The installer download was redirected to an address that is not allowed: %1.</source>
        <translation>インストーラーのダウンロードが、許可されていないアドレスにリダイレクトされました: %1。</translation>
    </message>
    <message>
        <source>The installer could not be downloaded: the server answered HTTP %1 %2.</source>
        <translation>インストーラーをダウンロードできませんでした: サーバーの応答は HTTP %1 %2 でした。</translation>
    </message>
    <message>
        <source>The installer download stalled: nothing arrived for %1 seconds.</source>
        <translation>インストーラーのダウンロードが止まっています: %1 秒間データが届いていません。</translation>
    </message>
    <message>
        <source>Could not reach the update server: %1</source>
        <translation>アップデートサーバーに接続できません: %1</translation>
    </message>
    <message>
        <source>The downloaded installer is damaged (checksum mismatch) and was deleted.</source>
        <translation>ダウンロードしたインストーラーが破損していたため (チェックサム不一致)、削除しました。</translation>
    </message>
    <message>
        <source>Could not replace the earlier file &quot;%1&quot;.</source>
        <translation>既存のファイル「%1」を置き換えられませんでした。</translation>
    </message>
    <message>
        <source>Could not rename the installer to &quot;%1&quot;: %2</source>
        <translation>インストーラーの名前を「%1」に変更できませんでした: %2</translation>
    </message>
    <message>
        <source>The installer was refused: it is larger than %1, more than an installer may be.</source>
        <translation>インストーラーは拒否されました: サイズが %1 を超えており、インストーラーとして許容される上限を超えています。</translation>
    </message>
</context>
<context>
    <name>InstallerFolder</name>
    <message>
        <source>there is no folder for the installer on this system</source>
        <translation>このシステムにはインストーラー用のフォルダーがありません</translation>
    </message>
    <message>
        <source>the folder &quot;%1&quot; could not be made ready for the installer</source>
        <extracomment>%1 is the folder&apos;s path.</extracomment>
        <translation>フォルダー「%1」をインストーラー用に準備できませんでした</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not lie in the installer&apos;s own folder</source>
        <extracomment>%1 is the installer&apos;s path. Shown inside &quot;The installer was not started: %1.&quot;</extracomment>
        <translation>「%1」はインストーラー専用のフォルダーにありません</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a program (.exe)</source>
        <extracomment>%1 is the installer&apos;s path. Shown inside &quot;The installer was not started: %1.&quot;</extracomment>
        <translation>「%1」はプログラム (.exe) ではありません</translation>
    </message>
</context>
<context>
    <name>Navigation</name>
    <message>
        <source>Kestrel Downloader</source>
        <translation>Kestrel Downloader</translation>
    </message>
    <message>
        <source>Download a video</source>
        <translation>動画をダウンロード</translation>
    </message>
    <message>
        <source>Opens the page where you paste the address of a YouTube video</source>
        <translation>YouTube 動画のアドレスを貼り付けるページを開きます</translation>
    </message>
    <message>
        <source>Go To Loomfield: Access 1000&apos;s of Sites</source>
        <translation>Loomfield へ: 1000 以上のサイトにアクセス</translation>
    </message>
    <message>
        <source>Opens the Loomfield web site in your browser</source>
        <translation>Loomfield のウェブサイトをブラウザーで開きます</translation>
    </message>
    <message>
        <source>Go To Loomfield&lt;br&gt;Access 1000&apos;s of Sites</source>
        <translation>Loomfield へ&lt;br&gt;1000 以上のサイトにアクセス</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>戻る</translation>
    </message>
    <message>
        <source>Returns to the start page</source>
        <translation>スタートページに戻ります</translation>
    </message>
    <message>
        <source>Video address</source>
        <translation>動画のアドレス</translation>
    </message>
    <message>
        <source>The address of a YouTube video; press Enter to look it up</source>
        <translation>YouTube 動画のアドレス。Enter キーで検索します</translation>
    </message>
    <message>
        <source>Process</source>
        <translation>処理</translation>
    </message>
    <message>
        <source>Looks up the video and lists its formats</source>
        <translation>動画を検索して形式を一覧表示します</translation>
    </message>
    <message>
        <source>Stops looking up the video and returns to its address</source>
        <translation>動画の検索をやめてアドレスに戻ります</translation>
    </message>
    <message>
        <source>Title of the video</source>
        <translation>動画のタイトル</translation>
    </message>
    <message>
        <source>title</source>
        <translation>タイトル</translation>
    </message>
    <message>
        <source>Duration of the video</source>
        <translation>動画の長さ</translation>
    </message>
    <message>
        <source>00:00:00</source>
        <translation>00:00:00</translation>
    </message>
    <message>
        <source>Looking up the video</source>
        <translation>動画を検索しています</translation>
    </message>
    <message>
        <source>Shown until the video&apos;s formats are listed</source>
        <translation>動画の形式が一覧表示されるまで表示されます</translation>
    </message>
    <message>
        <source>Formats</source>
        <translation>形式</translation>
    </message>
    <message>
        <source>The video&apos;s formats, largest first: type, resolution and size. Press Enter or click a format to download it</source>
        <translation>動画の形式 (大きい順): 種類、解像度、サイズ。Enter キーを押すか形式をクリックするとダウンロードします</translation>
    </message>
    <message>
        <source>Returns to the list of formats</source>
        <translation>形式の一覧に戻ります</translation>
    </message>
    <message>
        <source>Downloading: </source>
        <translation>ダウンロード中: </translation>
    </message>
    <message>
        <source>Video Successfully Downloaded</source>
        <translation>ダウンロードが完了しました</translation>
    </message>
    <message>
        <source>Download progress</source>
        <translation>ダウンロードの進行状況</translation>
    </message>
    <message>
        <source>How much of the video has been downloaded</source>
        <translation>動画のダウンロード済みの割合</translation>
    </message>
    <message>
        <source>Starts again with the address of another video</source>
        <translation>別の動画のアドレスでやり直します</translation>
    </message>
    <message>
        <source>Start Over</source>
        <translation>やり直す</translation>
    </message>
    <message>
        <source>Opens the folder with the downloaded video</source>
        <translation>ダウンロードした動画のフォルダーを開きます</translation>
    </message>
    <message>
        <source>Open Folder with File</source>
        <translation>フォルダーを開く</translation>
    </message>
    <message>
        <source>Stops the download</source>
        <translation>ダウンロードを中止します</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>Please wait</source>
        <translation>お待ちください</translation>
    </message>
    <message>
        <source>Shown while the program is busy</source>
        <translation>プログラムの処理中に表示されます</translation>
    </message>
    <message>
        <source>| %1 sec.</source>
        <translation>| %1 秒</translation>
    </message>
    <message>
        <source>Cannot request metadata</source>
        <translation>メタデータを取得できません</translation>
    </message>
    <message>
        <source>crash exit on metadata request</source>
        <translation>メタデータの要求中にクラッシュしました</translation>
    </message>
    <message>
        <source>crash exit on formats request</source>
        <translation>形式の要求中にクラッシュしました</translation>
    </message>
    <message>
        <source>crash exit at downloading process</source>
        <translation>ダウンロード中にクラッシュしました</translation>
    </message>
    <message>
        <source>format count error</source>
        <translation>形式の数が正しくありません</translation>
    </message>
    <message>
        <source>cannot start the downloader tool</source>
        <translation>ダウンロードツールを起動できません</translation>
    </message>
    <message>
        <source>indefinite</source>
        <translation>不明なエラー</translation>
    </message>
    <message>
        <source>WARNING</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>WARNING: You must provide at least some valid YouTube URL to proceed</source>
        <translation>警告: 続行するには有効な YouTube のアドレスを入力してください</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>タイトル</translation>
    </message>
    <message>
        <source>&lt;h3&gt;ERROR:&lt;/h3&gt;%1&lt;hr&gt;&lt;i&gt;Code: #0x%2&lt;/i&gt;</source>
        <extracomment>%1 is the kind of failure, %2 its code in hexadecimal.</extracomment>
        <translation>&lt;h3&gt;エラー:&lt;/h3&gt;%1&lt;hr&gt;&lt;i&gt;コード: #0x%2&lt;/i&gt;</translation>
    </message>
    <message>
        <source>ERROR</source>
        <translation>エラー</translation>
    </message>
    <message>
        <source>Unable to update. Please contact support</source>
        <translation>更新できませんでした。サポートにお問い合わせください</translation>
    </message>
    <message>
        <source>Success</source>
        <translation>更新完了</translation>
    </message>
    <message>
        <source>KestrelDownloader was successfully updated</source>
        <translation>KestrelDownloader を更新しました</translation>
    </message>
    <message>
        <source>Manually Update Software</source>
        <translation>ソフトウェアを手動で更新</translation>
    </message>
    <message>
        <source>Logging enabled</source>
        <translation>ログを有効にする</translation>
    </message>
    <message>
        <source>Change Scale Size</source>
        <translation>表示倍率の変更</translation>
    </message>
    <message>
        <source>%1%</source>
        <extracomment>A display scale in percent, as 130%.</extracomment>
        <translation>%1%</translation>
    </message>
    <message>
        <source>Show UUID</source>
        <translation>UUID を表示</translation>
    </message>
    <message>
        <source>About</source>
        <translation>バージョン情報</translation>
    </message>
    <message>
        <source>%1 version: %2</source>
        <translation>%1 バージョン %2</translation>
    </message>
</context>
<context>
    <name>QGuiApplication</name>
    <message>
        <source>QT_LAYOUT_DIRECTION</source>
        <translation>LTR</translation>
    </message>
</context>
<context>
    <name>ReleaseFeed</name>
    <message>
        <source>&quot;releaseNumber&quot; is missing or not a number</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>「releaseNumber」がないか、数値ではありません</translation>
    </message>
    <message>
        <source>&quot;releaseNumber&quot; is not a positive whole number</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>「releaseNumber」が正の整数ではありません</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is missing or not a text</source>
        <extracomment>%1 is a key of the release feed file, as &quot;version&quot;; it stays as it is.</extracomment>
        <translation>「%1」がないか、テキストではありません</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot;: %2</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;), %2 what is wrong with its entry.</extracomment>
        <translation>「%1」用のインストーラー: %2</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot;: &quot;sha256&quot; is not 64 hexadecimal digits</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;); &quot;sha256&quot; is a key of that file and stays as it is.</extracomment>
        <translation>「%1」用のインストーラー: 「sha256」が 64 桁の 16 進数ではありません</translation>
    </message>
    <message>
        <source>not valid JSON (%1 at offset %2)</source>
        <extracomment>%1 is the JSON reader&apos;s own message, %2 the position in the file where it stopped.</extracomment>
        <translation>有効な JSON ではありません (オフセット %2 で %1)</translation>
    </message>
    <message>
        <source>the document is not a JSON object</source>
        <translation>ドキュメントが JSON オブジェクトではありません</translation>
    </message>
    <message>
        <source>&quot;version&quot; is too long</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>「version」が長すぎます</translation>
    </message>
    <message>
        <source>&quot;buildDate&quot; is not of the form NN.NNNN</source>
        <extracomment>&quot;buildDate&quot; is a key of the release feed file and stays as it is; NN.NNNN shows the form of its value (two digits, a dot, four digits).</extracomment>
        <translation>「buildDate」が NN.NNNN の形式ではありません</translation>
    </message>
    <message>
        <source>&quot;installers&quot; is missing or not an object</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>「installers」がないか、オブジェクトではありません</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot; is not an object</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;).</extracomment>
        <translation>「%1」用のインストーラーの項目がオブジェクトではありません</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a usable address</source>
        <extracomment>%1 is a web address. Shown inside &quot;The update address %1.&quot; and similar messages.</extracomment>
        <translation>「%1」は使用できるアドレスではありません</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was refused: only secure https addresses are accepted</source>
        <extracomment>%1 is a web address. Shown inside &quot;The update address %1.&quot; and similar messages.</extracomment>
        <translation>「%1」は拒否されました: 安全な https アドレスのみ受け付けます</translation>
    </message>
</context>
<context>
    <name>SysInfoPlugin</name>
    <message>
        <source> (build %1)</source>
        <translation> (ビルド %1)</translation>
    </message>
    <message>
        <source>Operating system: %1</source>
        <translation>オペレーティングシステム: %1</translation>
    </message>
    <message>
        <source>Kernel: %1 %2</source>
        <translation>カーネル: %1 %2</translation>
    </message>
    <message>
        <source>CPU architecture: %1</source>
        <translation>CPU アーキテクチャ: %1</translation>
    </message>
    <message>
        <source>Qt version: %1</source>
        <translation>Qt バージョン: %1</translation>
    </message>
</context>
<context>
    <name>UpdaterPlugin</name>
    <message>
        <source>The update address %1.</source>
        <translation>アップデートのアドレス %1。</translation>
    </message>
    <message>
        <source>The update server redirected to an address that is not allowed: %1.</source>
        <translation>アップデートサーバーが、許可されていないアドレスにリダイレクトしました: %1。</translation>
    </message>
    <message>
        <source>The release information from the update server is too large to be a release feed.</source>
        <translation>アップデートサーバーのリリース情報が大きすぎるため、リリースフィードとして扱えません。</translation>
    </message>
    <message>
        <source>Could not get the release information: the update server answered HTTP %1 %2.</source>
        <translation>リリース情報を取得できませんでした: アップデートサーバーの応答は HTTP %1 %2 でした。</translation>
    </message>
    <message>
        <source>The update server did not answer within %1 seconds.</source>
        <translation>アップデートサーバーが %1 秒以内に応答しませんでした。</translation>
    </message>
    <message>
        <source>Could not reach the update server: %1</source>
        <translation>アップデートサーバーに接続できません: %1</translation>
    </message>
    <message>
        <source>The release information from the update server is not readable: %1.</source>
        <translation>アップデートサーバーのリリース情報を読み取れません: %1。</translation>
    </message>
    <message>
        <source>You have the latest version of %1.

The newest release on the update server is %2 (build %3).</source>
        <translation>%1 は最新バージョンです。

アップデートサーバー上の最新リリースは %2 (ビルド %3) です。</translation>
    </message>
    <message>
        <source>Version %1 of %2 is available, but the update server offers no installer for this system.</source>
        <translation>%2 のバージョン %1 が公開されていますが、このシステム用のインストーラーはアップデートサーバーにありません。</translation>
    </message>
    <message>
        <source>Version %1 (build %2) of %3 is available.

Do you want to download and install it now?</source>
        <translation>%3 のバージョン %1 (ビルド %2) が公開されています。

今すぐダウンロードしてインストールしますか?</translation>
    </message>
    <message>
        <source>Downloading %1 %2…
%3 of %4</source>
        <translation>%1 %2 をダウンロードしています…
%3 / %4</translation>
    </message>
    <message>
        <source>Downloading %1 %2…
%3</source>
        <translation>%1 %2 をダウンロードしています…
%3</translation>
    </message>
    <message>
        <source>Version %1 of %2 is being installed.

Please restart %2 once its installer has finished.</source>
        <translation>%2 のバージョン %1 をインストールしています。

インストーラーが終了したら %2 を再起動してください。</translation>
    </message>
    <message>
        <source>Software Update</source>
        <translation>ソフトウェアの更新</translation>
    </message>
    <message>
        <source>Downloading %1 %2…</source>
        <translation>%1 %2 をダウンロードしています…</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>The signature of the release information is too large to be a signature.</source>
        <translation>リリース情報の署名が大きすぎるため、署名として扱えません。</translation>
    </message>
    <message>
        <source>The release information from the update server was refused: it is not signed (its signature %1 could not be fetched: HTTP %2 %3).</source>
        <translation>アップデートサーバーのリリース情報は拒否されました: 署名されていません (署名 %1 を取得できませんでした: HTTP %2 %3)。</translation>
    </message>
    <message>
        <source>The release information from the update server was refused: %1.</source>
        <translation>アップデートサーバーのリリース情報は拒否されました: %1。</translation>
    </message>
    <message>
        <source>The installer cannot be downloaded: %1.</source>
        <translation>インストーラーをダウンロードできません: %1。</translation>
    </message>
    <message>
        <source>The downloaded installer could not be read again before its start and was deleted.</source>
        <translation>ダウンロードしたインストーラーを起動前に再度読み取れなかったため、削除しました。</translation>
    </message>
    <message>
        <source>The downloaded installer was changed after its check and was deleted; it was not started.</source>
        <translation>ダウンロードしたインストーラーが確認後に変更されていたため、削除しました。起動はしていません。</translation>
    </message>
    <message>
        <source>The installer was not started: %1.</source>
        <translation>インストーラーは起動されませんでした: %1。</translation>
    </message>
    <message>
        <source>The installer &quot;%1&quot; could not be started and was deleted.</source>
        <translation>インストーラー「%1」を起動できなかったため、削除しました。</translation>
    </message>
</context>
</TS>
