<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>AboutDialog</name>
    <message>
        <source>Version %1</source>
        <translation>版本 %1</translation>
    </message>
    <message>
        <source>System information</source>
        <translation>系统信息</translation>
    </message>
</context>
<context>
    <name>FeedSignature</name>
    <message>
        <source>Could not create a temporary folder for the signature check: %1</source>
        <translation>无法为签名验证创建临时文件夹：%1</translation>
    </message>
    <message>
        <source>it is signed by another key than the application&apos;s release key</source>
        <translation>它并非由本应用程序的发布密钥签名，而是由其他密钥签名</translation>
    </message>
    <message>
        <source>its signature does not match its content</source>
        <translation>其签名与内容不符</translation>
    </message>
    <message>
        <source>its signature is not a valid signature</source>
        <translation>其签名不是有效的签名</translation>
    </message>
    <message>
        <source>Could not write &quot;%1&quot; for the signature check: %2</source>
        <translation>无法写入“%1”以验证签名：%2</translation>
    </message>
    <message>
        <source>gpgv (%1) could not be started</source>
        <translation>无法启动 gpgv（%1）</translation>
    </message>
    <message>
        <source>gpgv did not answer within %1 seconds</source>
        <translation>gpgv 未在 %1 秒内响应</translation>
    </message>
</context>
<context>
    <name>FormatTableModel</name>
    <message>
        <source>Type</source>
        <translation>类型</translation>
    </message>
    <message>
        <source>ID.</source>
        <translation>ID</translation>
    </message>
    <message>
        <source>Resolution</source>
        <translation>分辨率</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>大小</translation>
    </message>
</context>
<context>
    <name>IdentifierDialog</name>
    <message>
        <source>Machine identifier</source>
        <translation>机器标识符</translation>
    </message>
    <message>
        <source>The identifier of this computer:</source>
        <translation>本计算机的标识符：</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>复制(&amp;C)</translation>
    </message>
    <message>
        <source>Copied to the clipboard.</source>
        <translation>已复制到剪贴板。</translation>
    </message>
</context>
<context>
    <name>Identity</name>
    <message>
        <source>simple downloader from YouTube, full version is on Loomfield site</source>
        <translation>简易 YouTube 下载器，完整版请访问 Loomfield 网站</translation>
    </message>
</context>
<context>
    <name>InstallerDownload</name>
    <message>
        <source>Could not save the installer as &quot;%1&quot;: %2</source>
        <translation>无法将安装程序保存为“%1”：%2</translation>
    </message>
    <message>
        <source>The installer download was redirected to an address that is not allowed: %1.</source>
        <translation>安装程序的下载被重定向到不允许的地址：%1。</translation>
    </message>
    <message>
        <source>The installer could not be downloaded: the server answered HTTP %1 %2.</source>
        <translation>无法下载安装程序：服务器返回 HTTP %1 %2。</translation>
    </message>
    <message>
        <source>The installer download stalled: nothing arrived for %1 seconds.</source>
        <translation>安装程序下载停滞：已有 %1 秒未收到任何数据。</translation>
    </message>
    <message>
        <source>Could not reach the update server: %1</source>
        <translation>无法连接更新服务器：%1</translation>
    </message>
    <message>
        <source>The downloaded installer is damaged (checksum mismatch) and was deleted.</source>
        <translation>下载的安装程序已损坏（校验和不匹配），已将其删除。</translation>
    </message>
    <message>
        <source>Could not replace the earlier file &quot;%1&quot;.</source>
        <translation>无法替换原有文件“%1”。</translation>
    </message>
    <message>
        <source>Could not rename the installer to &quot;%1&quot;: %2</source>
        <translation>无法将安装程序重命名为“%1”：%2</translation>
    </message>
    <message>
        <source>The installer was refused: it is larger than %1, more than an installer may be.</source>
        <translation>安装程序被拒绝：其大小超过 %1，超出了安装程序允许的上限。</translation>
    </message>
</context>
<context>
    <name>InstallerFolder</name>
    <message>
        <source>there is no folder for the installer on this system</source>
        <translation>本系统上没有用于存放安装程序的文件夹</translation>
    </message>
    <message>
        <source>the folder &quot;%1&quot; could not be made ready for the installer</source>
        <extracomment>%1 is the folder&apos;s path.</extracomment>
        <translation>无法为安装程序准备文件夹“%1”</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not lie in the installer&apos;s own folder</source>
        <extracomment>%1 is the installer&apos;s path. Shown inside &quot;The installer was not started: %1.&quot;</extracomment>
        <translation>“%1”不在安装程序专用的文件夹中</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a program (.exe)</source>
        <extracomment>%1 is the installer&apos;s path. Shown inside &quot;The installer was not started: %1.&quot;</extracomment>
        <translation>“%1”不是程序（.exe）</translation>
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
        <translation>下载视频</translation>
    </message>
    <message>
        <source>Opens the page where you paste the address of a YouTube video</source>
        <translation>打开用于粘贴 YouTube 视频地址的页面</translation>
    </message>
    <message>
        <source>Go To Loomfield: Access 1000&apos;s of Sites</source>
        <translation>前往 Loomfield：访问上千个网站</translation>
    </message>
    <message>
        <source>Opens the Loomfield web site in your browser</source>
        <translation>在浏览器中打开 Loomfield 网站</translation>
    </message>
    <message>
        <source>Go To Loomfield&lt;br&gt;Access 1000&apos;s of Sites</source>
        <translation>前往 Loomfield&lt;br&gt;访问上千个网站</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>返回</translation>
    </message>
    <message>
        <source>Returns to the start page</source>
        <translation>返回起始页</translation>
    </message>
    <message>
        <source>Video address</source>
        <translation>视频地址</translation>
    </message>
    <message>
        <source>The address of a YouTube video; press Enter to look it up</source>
        <translation>YouTube 视频的地址；按 Enter 键查询</translation>
    </message>
    <message>
        <source>Process</source>
        <translation>处理</translation>
    </message>
    <message>
        <source>Looks up the video and lists its formats</source>
        <translation>查询视频并列出其格式</translation>
    </message>
    <message>
        <source>Stops looking up the video and returns to its address</source>
        <translation>停止查询视频并返回地址页</translation>
    </message>
    <message>
        <source>Title of the video</source>
        <translation>视频标题</translation>
    </message>
    <message>
        <source>title</source>
        <translation>标题</translation>
    </message>
    <message>
        <source>Duration of the video</source>
        <translation>视频时长</translation>
    </message>
    <message>
        <source>00:00:00</source>
        <translation>00:00:00</translation>
    </message>
    <message>
        <source>Looking up the video</source>
        <translation>正在查询视频</translation>
    </message>
    <message>
        <source>Shown until the video&apos;s formats are listed</source>
        <translation>在列出视频格式之前显示</translation>
    </message>
    <message>
        <source>Formats</source>
        <translation>格式</translation>
    </message>
    <message>
        <source>The video&apos;s formats, largest first: type, resolution and size. Press Enter or click a format to download it</source>
        <translation>视频的格式，从大到小排列：类型、分辨率和大小。按 Enter 键或单击某个格式即可下载</translation>
    </message>
    <message>
        <source>Returns to the list of formats</source>
        <translation>返回格式列表</translation>
    </message>
    <message>
        <source>Downloading: </source>
        <translation>正在下载：</translation>
    </message>
    <message>
        <source>Video Successfully Downloaded</source>
        <translation>视频下载成功</translation>
    </message>
    <message>
        <source>Download progress</source>
        <translation>下载进度</translation>
    </message>
    <message>
        <source>How much of the video has been downloaded</source>
        <translation>视频已下载的部分</translation>
    </message>
    <message>
        <source>Starts again with the address of another video</source>
        <translation>用另一个视频的地址重新开始</translation>
    </message>
    <message>
        <source>Start Over</source>
        <translation>重新开始</translation>
    </message>
    <message>
        <source>Opens the folder with the downloaded video</source>
        <translation>打开下载视频所在的文件夹</translation>
    </message>
    <message>
        <source>Open Folder with File</source>
        <translation>打开所在文件夹</translation>
    </message>
    <message>
        <source>Stops the download</source>
        <translation>停止下载</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Please wait</source>
        <translation>请稍候</translation>
    </message>
    <message>
        <source>Shown while the program is busy</source>
        <translation>程序忙碌时显示</translation>
    </message>
    <message>
        <source>| %1 sec.</source>
        <translation>| %1 秒</translation>
    </message>
    <message>
        <source>Cannot request metadata</source>
        <translation>无法获取元数据</translation>
    </message>
    <message>
        <source>crash exit on metadata request</source>
        <translation>请求元数据时崩溃</translation>
    </message>
    <message>
        <source>crash exit on formats request</source>
        <translation>请求格式时崩溃</translation>
    </message>
    <message>
        <source>crash exit at downloading process</source>
        <translation>下载过程中崩溃</translation>
    </message>
    <message>
        <source>format count error</source>
        <translation>格式数量错误</translation>
    </message>
    <message>
        <source>cannot start the downloader tool</source>
        <translation>无法启动下载工具</translation>
    </message>
    <message>
        <source>indefinite</source>
        <translation>未知错误</translation>
    </message>
    <message>
        <source>WARNING</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>WARNING: You must provide at least some valid YouTube URL to proceed</source>
        <translation>警告：必须提供有效的 YouTube 地址才能继续</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>标题</translation>
    </message>
    <message>
        <source>&lt;h3&gt;ERROR:&lt;/h3&gt;%1&lt;hr&gt;&lt;i&gt;Code: #0x%2&lt;/i&gt;</source>
        <extracomment>%1 is the kind of failure, %2 its code in hexadecimal.</extracomment>
        <translation>&lt;h3&gt;错误：&lt;/h3&gt;%1&lt;hr&gt;&lt;i&gt;代码：#0x%2&lt;/i&gt;</translation>
    </message>
    <message>
        <source>ERROR</source>
        <translation>错误</translation>
    </message>
    <message>
        <source>Unable to update. Please contact support</source>
        <translation>无法更新。请联系技术支持</translation>
    </message>
    <message>
        <source>Success</source>
        <translation>更新成功</translation>
    </message>
    <message>
        <source>KestrelDownloader was successfully updated</source>
        <translation>KestrelDownloader 已成功更新</translation>
    </message>
    <message>
        <source>Manually Update Software</source>
        <translation>手动更新软件</translation>
    </message>
    <message>
        <source>Logging enabled</source>
        <translation>启用日志</translation>
    </message>
    <message>
        <source>Change Scale Size</source>
        <translation>更改缩放比例</translation>
    </message>
    <message>
        <source>%1%</source>
        <extracomment>A display scale in percent, as 130%.</extracomment>
        <translation>%1%</translation>
    </message>
    <message>
        <source>Show UUID</source>
        <translation>显示 UUID</translation>
    </message>
    <message>
        <source>About</source>
        <translation>关于</translation>
    </message>
    <message>
        <source>%1 version: %2</source>
        <translation>%1 版本：%2</translation>
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
        <translation>“releaseNumber”缺失或不是数字</translation>
    </message>
    <message>
        <source>&quot;releaseNumber&quot; is not a positive whole number</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>“releaseNumber”不是正整数</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is missing or not a text</source>
        <extracomment>%1 is a key of the release feed file, as &quot;version&quot;; it stays as it is.</extracomment>
        <translation>“%1”缺失或不是文本</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot;: %2</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;), %2 what is wrong with its entry.</extracomment>
        <translation>“%1”的安装程序：%2</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot;: &quot;sha256&quot; is not 64 hexadecimal digits</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;); &quot;sha256&quot; is a key of that file and stays as it is.</extracomment>
        <translation>“%1”的安装程序：“sha256”不是 64 位十六进制数字</translation>
    </message>
    <message>
        <source>not valid JSON (%1 at offset %2)</source>
        <extracomment>%1 is the JSON reader&apos;s own message, %2 the position in the file where it stopped.</extracomment>
        <translation>不是有效的 JSON（%1，位于偏移量 %2）</translation>
    </message>
    <message>
        <source>the document is not a JSON object</source>
        <translation>该文档不是 JSON 对象</translation>
    </message>
    <message>
        <source>&quot;version&quot; is too long</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>“version”过长</translation>
    </message>
    <message>
        <source>&quot;buildDate&quot; is not of the form NN.NNNN</source>
        <extracomment>&quot;buildDate&quot; is a key of the release feed file and stays as it is; NN.NNNN shows the form of its value (two digits, a dot, four digits).</extracomment>
        <translation>“buildDate”的格式不是 NN.NNNN</translation>
    </message>
    <message>
        <source>&quot;installers&quot; is missing or not an object</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>“installers”缺失或不是对象</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot; is not an object</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;).</extracomment>
        <translation>“%1”的安装程序条目不是对象</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a usable address</source>
        <extracomment>%1 is a web address. Shown inside &quot;The update address %1.&quot; and similar messages.</extracomment>
        <translation>“%1”不是可用的地址</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was refused: only secure https addresses are accepted</source>
        <extracomment>%1 is a web address. Shown inside &quot;The update address %1.&quot; and similar messages.</extracomment>
        <translation>“%1”被拒绝：只接受安全的 https 地址</translation>
    </message>
</context>
<context>
    <name>SysInfoPlugin</name>
    <message>
        <source> (build %1)</source>
        <translation> (构建 %1)</translation>
    </message>
    <message>
        <source>Operating system: %1</source>
        <translation>操作系统：%1</translation>
    </message>
    <message>
        <source>Kernel: %1 %2</source>
        <translation>内核：%1 %2</translation>
    </message>
    <message>
        <source>CPU architecture: %1</source>
        <translation>CPU 架构：%1</translation>
    </message>
    <message>
        <source>Qt version: %1</source>
        <translation>Qt 版本：%1</translation>
    </message>
</context>
<context>
    <name>UpdaterPlugin</name>
    <message>
        <source>The update address %1.</source>
        <translation>更新地址%1。</translation>
    </message>
    <message>
        <source>The update server redirected to an address that is not allowed: %1.</source>
        <translation>更新服务器重定向到不允许的地址：%1。</translation>
    </message>
    <message>
        <source>The release information from the update server is too large to be a release feed.</source>
        <translation>更新服务器的发布信息过大，不是有效的发布源。</translation>
    </message>
    <message>
        <source>Could not get the release information: the update server answered HTTP %1 %2.</source>
        <translation>无法获取发布信息：更新服务器返回 HTTP %1 %2。</translation>
    </message>
    <message>
        <source>The update server did not answer within %1 seconds.</source>
        <translation>更新服务器在 %1 秒内没有响应。</translation>
    </message>
    <message>
        <source>Could not reach the update server: %1</source>
        <translation>无法连接更新服务器：%1</translation>
    </message>
    <message>
        <source>The release information from the update server is not readable: %1.</source>
        <translation>无法读取更新服务器的发布信息：%1。</translation>
    </message>
    <message>
        <source>You have the latest version of %1.

The newest release on the update server is %2 (build %3).</source>
        <translation>您使用的已是 %1 的最新版本。

更新服务器上的最新发布为 %2（构建 %3）。</translation>
    </message>
    <message>
        <source>Version %1 of %2 is available, but the update server offers no installer for this system.</source>
        <translation>%2 的 %1 版已发布，但更新服务器没有提供适用于本系统的安装程序。</translation>
    </message>
    <message>
        <source>Version %1 (build %2) of %3 is available.

Do you want to download and install it now?</source>
        <translation>%3 的 %1 版（构建 %2）已发布。

要立即下载并安装吗？</translation>
    </message>
    <message>
        <source>Downloading %1 %2…
%3 of %4</source>
        <translation>正在下载 %1 %2…
%3 / %4</translation>
    </message>
    <message>
        <source>Downloading %1 %2…
%3</source>
        <translation>正在下载 %1 %2…
%3</translation>
    </message>
    <message>
        <source>Version %1 of %2 is being installed.

Please restart %2 once its installer has finished.</source>
        <translation>正在安装 %2 的 %1 版。

安装程序完成后，请重新启动 %2。</translation>
    </message>
    <message>
        <source>Software Update</source>
        <translation>软件更新</translation>
    </message>
    <message>
        <source>Downloading %1 %2…</source>
        <translation>正在下载 %1 %2…</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>The signature of the release information is too large to be a signature.</source>
        <translation>发布信息的签名过大，不是有效的签名。</translation>
    </message>
    <message>
        <source>The release information from the update server was refused: it is not signed (its signature %1 could not be fetched: HTTP %2 %3).</source>
        <translation>更新服务器的发布信息被拒绝：它没有签名（无法获取其签名 %1：HTTP %2 %3）。</translation>
    </message>
    <message>
        <source>The release information from the update server was refused: %1.</source>
        <translation>更新服务器的发布信息被拒绝：%1。</translation>
    </message>
    <message>
        <source>The installer cannot be downloaded: %1.</source>
        <translation>无法下载安装程序：%1。</translation>
    </message>
    <message>
        <source>The downloaded installer could not be read again before its start and was deleted.</source>
        <translation>下载的安装程序在启动前无法再次读取，已将其删除。</translation>
    </message>
    <message>
        <source>The downloaded installer was changed after its check and was deleted; it was not started.</source>
        <translation>下载的安装程序在校验后被更改，已将其删除且未启动。</translation>
    </message>
    <message>
        <source>The installer was not started: %1.</source>
        <translation>未启动安装程序：%1。</translation>
    </message>
    <message>
        <source>The installer &quot;%1&quot; could not be started and was deleted.</source>
        <translation>无法启动安装程序“%1”，已将其删除。</translation>
    </message>
</context>
</TS>
