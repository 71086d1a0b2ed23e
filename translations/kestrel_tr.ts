<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="tr">
<context>
    <name>AboutDialog</name>
    <message>
        <source>Version %1</source>
        <translation>Sürüm %1</translation>
    </message>
    <message>
        <source>System information</source>
        <translation>Sistem bilgileri</translation>
    </message>
</context>
<context>
    <name>FeedSignature</name>
    <message>
        <source>Could not create a temporary folder for the signature check: %1</source>
        <translation>İmza denetimi için geçici klasör oluşturulamadı: %1</translation>
    </message>
    <message>
        <source>it is signed by another key than the application&apos;s release key</source>
        <translation>uygulamanın sürüm anahtarıyla değil, başka bir anahtarla imzalanmış</translation>
    </message>
    <message>
        <source>its signature does not match its content</source>
        <translation>imzası içeriğiyle uyuşmuyor</translation>
    </message>
    <message>
        <source>its signature is not a valid signature</source>
        <translation>imzası geçerli bir imza değil</translation>
    </message>
    <message>
        <source>Could not write &quot;%1&quot; for the signature check: %2</source>
        <translation>İmza denetimi için &quot;%1&quot; yazılamadı: %2</translation>
    </message>
    <message>
        <source>gpgv (%1) could not be started</source>
        <translation>gpgv (%1) başlatılamadı</translation>
    </message>
    <message>
        <source>gpgv did not answer within %1 seconds</source>
        <translation>gpgv %1 saniye içinde yanıt vermedi</translation>
    </message>
</context>
<context>
    <name>FormatTableModel</name>
    <message>
        <source>Type</source>
        <translation>Tür</translation>
    </message>
    <message>
        <source>ID.</source>
        <translation>ID</translation>
    </message>
    <message>
        <source>Resolution</source>
        <translation>Çözünürlük</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Boyut</translation>
    </message>
</context>
<context>
    <name>IdentifierDialog</name>
    <message>
        <source>Machine identifier</source>
        <translation>Makine kimliği</translation>
    </message>
    <message>
        <source>The identifier of this computer:</source>
        <translation>Bu bilgisayarın kimliği:</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopyala</translation>
    </message>
    <message>
        <source>Copied to the clipboard.</source>
        <translation>Panoya kopyalandı.</translation>
    </message>
</context>
<context>
    <name>Identity</name>
    <message>
        <source>simple downloader from YouTube, full version is on Loomfield site</source>
        <translation>YouTube için basit bir indirici; tam sürümü Loomfield sitesinde</translation>
    </message>
</context>
<context>
    <name>InstallerDownload</name>
    <message>
        <source>Could not save the installer as &quot;%1&quot;: %2</source>
        <translation>Yükleyici &quot;%1&quot; olarak kaydedilemedi: %2</translation>
    </message>
    <message>
        <source>The installer download was redirected to an address that is not allowed: %1.</source>
        <translation>Yükleyicinin indirilmesi izin verilmeyen bir adrese yönlendirildi: %1.</translation>
    </message>
    <message>
        <source>The installer could not be downloaded: the server answered HTTP %1 %2.</source>
        <translation>Yükleyici indirilemedi: sunucu HTTP %1 %2 yanıtını verdi.</translation>
    </message>
    <message>
        <source>The installer download stalled: nothing arrived for %1 seconds.</source>
        <translation>Yükleyicinin indirilmesi takıldı: %1 saniyedir hiçbir veri gelmedi.</translation>
    </message>
    <message>
        <source>Could not reach the update server: %1</source>
        <translation>Güncelleme sunucusuna ulaşılamadı: %1</translation>
    </message>
    <message>
        <source>The downloaded installer is damaged (checksum mismatch) and was deleted.</source>
        <translation>İndirilen yükleyici bozuk (sağlama toplamı uyuşmuyor) ve silindi.</translation>
    </message>
    <message>
        <source>Could not replace the earlier file &quot;%1&quot;.</source>
        <translation>Önceki &quot;%1&quot; dosyası değiştirilemedi.</translation>
    </message>
    <message>
        <source>Could not rename the installer to &quot;%1&quot;: %2</source>
        <translation>Yükleyicinin adı &quot;%1&quot; olarak değiştirilemedi: %2</translation>
    </message>
    <message>
        <source>The installer was refused: it is larger than %1, more than an installer may be.</source>
        <translation>Yükleyici reddedildi: boyutu %1 sınırını aşıyor; bir yükleyici bundan büyük olamaz.</translation>
    </message>
</context>
<context>
    <name>InstallerFolder</name>
    <message>
        <source>there is no folder for the installer on this system</source>
        <translation>bu sistemde yükleyici için bir klasör yok</translation>
    </message>
    <message>
        <source>the folder &quot;%1&quot; could not be made ready for the installer</source>
        <extracomment>%1 is the folder&apos;s path.</extracomment>
        <translation>&quot;%1&quot; klasörü yükleyici için hazırlanamadı</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not lie in the installer&apos;s own folder</source>
        <extracomment>%1 is the installer&apos;s path. Shown inside &quot;The installer was not started: %1.&quot;</extracomment>
        <translation>&quot;%1&quot; yükleyicinin kendi klasöründe değil</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a program (.exe)</source>
        <extracomment>%1 is the installer&apos;s path. Shown inside &quot;The installer was not started: %1.&quot;</extracomment>
        <translation>&quot;%1&quot; bir program (.exe) değil</translation>
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
        <translation>Video indir</translation>
    </message>
    <message>
        <source>Opens the page where you paste the address of a YouTube video</source>
        <translation>Bir YouTube videosunun adresini yapıştıracağınız sayfayı açar</translation>
    </message>
    <message>
        <source>Go To Loomfield: Access 1000&apos;s of Sites</source>
        <translation>Loomfield&apos;a git: 1000&apos;den fazla siteye erişim</translation>
    </message>
    <message>
        <source>Opens the Loomfield web site in your browser</source>
        <translation>Loomfield web sitesini tarayıcınızda açar</translation>
    </message>
    <message>
        <source>Go To Loomfield&lt;br&gt;Access 1000&apos;s of Sites</source>
        <translation>Loomfield&apos;a git&lt;br&gt;1000&apos;den fazla siteye erişim</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Geri</translation>
    </message>
    <message>
        <source>Returns to the start page</source>
        <translation>Başlangıç sayfasına döner</translation>
    </message>
    <message>
        <source>Video address</source>
        <translation>Video adresi</translation>
    </message>
    <message>
        <source>The address of a YouTube video; press Enter to look it up</source>
        <translation>Bir YouTube videosunun adresi; aramak için Enter&apos;a basın</translation>
    </message>
    <message>
        <source>Process</source>
        <translation>İşle</translation>
    </message>
    <message>
        <source>Looks up the video and lists its formats</source>
        <translation>Videoyu arar ve biçimlerini listeler</translation>
    </message>
    <message>
        <source>Stops looking up the video and returns to its address</source>
        <translation>Videoyu aramayı durdurur ve adresine döner</translation>
    </message>
    <message>
        <source>Title of the video</source>
        <translation>Videonun başlığı</translation>
    </message>
    <message>
        <source>title</source>
        <translation>başlık</translation>
    </message>
    <message>
        <source>Duration of the video</source>
        <translation>Videonun süresi</translation>
    </message>
    <message>
        <source>00:00:00</source>
        <translation>00:00:00</translation>
    </message>
    <message>
        <source>Looking up the video</source>
        <translation>Video aranıyor</translation>
    </message>
    <message>
        <source>Shown until the video&apos;s formats are listed</source>
        <translation>Videonun biçimleri listelenene kadar gösterilir</translation>
    </message>
    <message>
        <source>Formats</source>
        <translation>Biçimler</translation>
    </message>
    <message>
        <source>The video&apos;s formats, largest first: type, resolution and size. Press Enter or click a format to download it</source>
        <translation>Videonun biçimleri, en büyüğünden başlayarak: tür, çözünürlük ve boyut. İndirmek için Enter&apos;a basın veya bir biçime tıklayın</translation>
    </message>
    <message>
        <source>Returns to the list of formats</source>
        <translation>Biçim listesine döner</translation>
    </message>
    <message>
        <source>Downloading: </source>
        <translation>İndiriliyor: </translation>
    </message>
    <message>
        <source>Video Successfully Downloaded</source>
        <translation>Video başarıyla indirildi</translation>
    </message>
    <message>
        <source>Download progress</source>
        <translation>İndirme ilerlemesi</translation>
    </message>
    <message>
        <source>How much of the video has been downloaded</source>
        <translation>Videonun ne kadarının indirildiği</translation>
    </message>
    <message>
        <source>Starts again with the address of another video</source>
        <translation>Başka bir videonun adresiyle yeniden başlar</translation>
    </message>
    <message>
        <source>Start Over</source>
        <translation>Baştan başla</translation>
    </message>
    <message>
        <source>Opens the folder with the downloaded video</source>
        <translation>İndirilen videonun bulunduğu klasörü açar</translation>
    </message>
    <message>
        <source>Open Folder with File</source>
        <translation>Dosyanın klasörünü aç</translation>
    </message>
    <message>
        <source>Stops the download</source>
        <translation>İndirmeyi durdurur</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>İptal</translation>
    </message>
    <message>
        <source>Please wait</source>
        <translation>Lütfen bekleyin</translation>
    </message>
    <message>
        <source>Shown while the program is busy</source>
        <translation>Program meşgulken gösterilir</translation>
    </message>
    <message>
        <source>| %1 sec.</source>
        <translation>| %1 sn.</translation>
    </message>
    <message>
        <source>Cannot request metadata</source>
        <translation>Üst veriler alınamıyor</translation>
    </message>
    <message>
        <source>crash exit on metadata request</source>
        <translation>üst veri isteğinde çökme</translation>
    </message>
    <message>
        <source>crash exit on formats request</source>
        <translation>biçim isteğinde çökme</translation>
    </message>
    <message>
        <source>crash exit at downloading process</source>
        <translation>indirme sırasında çökme</translation>
    </message>
    <message>
        <source>format count error</source>
        <translation>biçim sayısı hatası</translation>
    </message>
    <message>
        <source>cannot start the downloader tool</source>
        <translation>indirme aracı başlatılamıyor</translation>
    </message>
    <message>
        <source>indefinite</source>
        <translation>bilinmeyen hata</translation>
    </message>
    <message>
        <source>WARNING</source>
        <translation>UYARI</translation>
    </message>
    <message>
        <source>WARNING: You must provide at least some valid YouTube URL to proceed</source>
        <translation>UYARI: Devam etmek için geçerli bir YouTube adresi girmelisiniz</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Başlık</translation>
    </message>
    <message>
        <source>&lt;h3&gt;ERROR:&lt;/h3&gt;%1&lt;hr&gt;&lt;i&gt;Code: #0x%2&lt;/i&gt;</source>
        <extracomment>%1 is the kind of failure, %2 its code in hexadecimal.</extracomment>
        <translation>&lt;h3&gt;HATA:&lt;/h3&gt;%1&lt;hr&gt;&lt;i&gt;Kod: #0x%2&lt;/i&gt;</translation>
    </message>
    <message>
        <source>ERROR</source>
        <translation>HATA</translation>
    </message>
    <message>
        <source>Unable to update. Please contact support</source>
        <translation>Güncellenemedi. Lütfen destek ekibiyle iletişime geçin</translation>
    </message>
    <message>
        <source>Success</source>
        <translation>Güncelleme tamamlandı</translation>
    </message>
    <message>
        <source>KestrelDownloader was successfully updated</source>
        <translation>KestrelDownloader başarıyla güncellendi</translation>
    </message>
    <message>
        <source>Manually Update Software</source>
        <translation>Yazılımı elle güncelle</translation>
    </message>
    <message>
        <source>Logging enabled</source>
        <translation>Günlük kaydı etkin</translation>
    </message>
    <message>
        <source>Change Scale Size</source>
        <translation>Ölçeği değiştir</translation>
    </message>
    <message>
        <source>%1%</source>
        <extracomment>A display scale in percent, as 130%.</extracomment>
        <translation>%%1</translation>
    </message>
    <message>
        <source>Show UUID</source>
        <translation>UUID&apos;yi göster</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Hakkında</translation>
    </message>
    <message>
        <source>%1 version: %2</source>
        <translation>%1, sürüm %2</translation>
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
        <translation>&quot;releaseNumber&quot; eksik ya da bir sayı değil</translation>
    </message>
    <message>
        <source>&quot;releaseNumber&quot; is not a positive whole number</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>&quot;releaseNumber&quot; pozitif bir tam sayı değil</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is missing or not a text</source>
        <extracomment>%1 is a key of the release feed file, as &quot;version&quot;; it stays as it is.</extracomment>
        <translation>&quot;%1&quot; eksik ya da bir metin değil</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot;: %2</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;), %2 what is wrong with its entry.</extracomment>
        <translation>&quot;%1&quot; için yükleyici: %2</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot;: &quot;sha256&quot; is not 64 hexadecimal digits</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;); &quot;sha256&quot; is a key of that file and stays as it is.</extracomment>
        <translation>&quot;%1&quot; için yükleyici: &quot;sha256&quot; 64 onaltılık basamaktan oluşmuyor</translation>
    </message>
    <message>
        <source>not valid JSON (%1 at offset %2)</source>
        <extracomment>%1 is the JSON reader&apos;s own message, %2 the position in the file where it stopped.</extracomment>
        <translation>geçerli bir JSON değil (%2 konumunda %1)</translation>
    </message>
    <message>
        <source>the document is not a JSON object</source>
        <translation>belge bir JSON nesnesi değil</translation>
    </message>
    <message>
        <source>&quot;version&quot; is too long</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>&quot;version&quot; çok uzun</translation>
    </message>
    <message>
        <source>&quot;buildDate&quot; is not of the form NN.NNNN</source>
        <extracomment>&quot;buildDate&quot; is a key of the release feed file and stays as it is; NN.NNNN shows the form of its value (two digits, a dot, four digits).</extracomment>
        <translation>&quot;buildDate&quot; NN.NNNN biçiminde değil</translation>
    </message>
    <message>
        <source>&quot;installers&quot; is missing or not an object</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>&quot;installers&quot; eksik ya da bir nesne değil</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot; is not an object</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;).</extracomment>
        <translation>&quot;%1&quot; için yükleyici kaydı bir nesne değil</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a usable address</source>
        <extracomment>%1 is a web address. Shown inside &quot;The update address %1.&quot; and similar messages.</extracomment>
        <translation>&quot;%1&quot; kullanılabilir bir adres değil</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was refused: only secure https addresses are accepted</source>
        <extracomment>%1 is a web address. Shown inside &quot;The update address %1.&quot; and similar messages.</extracomment>
        <translation>&quot;%1&quot; reddedildi: yalnızca güvenli https adresleri kabul edilir</translation>
    </message>
</context>
<context>
    <name>SysInfoPlugin</name>
    <message>
        <source> (build %1)</source>
        <translation> (derleme %1)</translation>
    </message>
    <message>
        <source>Operating system: %1</source>
        <translation>İşletim sistemi: %1</translation>
    </message>
    <message>
        <source>Kernel: %1 %2</source>
        <translation>Çekirdek: %1 %2</translation>
    </message>
    <message>
        <source>CPU architecture: %1</source>
        <translation>İşlemci mimarisi: %1</translation>
    </message>
    <message>
        <source>Qt version: %1</source>
        <translation>Qt sürümü: %1</translation>
    </message>
</context>
<context>
    <name>UpdaterPlugin</name>
    <message>
        <source>The update address %1.</source>
        <translation>Güncelleme adresi %1.</translation>
    </message>
    <message>
        <source>The update server redirected to an address that is not allowed: %1.</source>
        <translation>Güncelleme sunucusu izin verilmeyen bir adrese yönlendirdi: %1.</translation>
    </message>
    <message>
        <source>The release information from the update server is too large to be a release feed.</source>
        <translation>Güncelleme sunucusundan gelen sürüm bilgisi, bir sürüm akışı olamayacak kadar büyük.</translation>
    </message>
    <message>
        <source>Could not get the release information: the update server answered HTTP %1 %2.</source>
        <translation>Sürüm bilgisi alınamadı: güncelleme sunucusu HTTP %1 %2 yanıtını verdi.</translation>
    </message>
    <message>
        <source>The update server did not answer within %1 seconds.</source>
        <translation>Güncelleme sunucusu %1 saniye içinde yanıt vermedi.</translation>
    </message>
    <message>
        <source>Could not reach the update server: %1</source>
        <translation>Güncelleme sunucusuna ulaşılamadı: %1</translation>
    </message>
    <message>
        <source>The release information from the update server is not readable: %1.</source>
        <translation>Güncelleme sunucusundan gelen sürüm bilgisi okunamıyor: %1.</translation>
    </message>
    <message>
        <source>You have the latest version of %1.

The newest release on the update server is %2 (build %3).</source>
        <translation>%1 uygulamasının en son sürümü sizde yüklü.

Güncelleme sunucusundaki en yeni sürüm: %2 (derleme %3).</translation>
    </message>
    <message>
        <source>Version %1 of %2 is available, but the update server offers no installer for this system.</source>
        <translation>%2 uygulamasının %1 sürümü yayımlandı, ancak güncelleme sunucusu bu sistem için bir yükleyici sunmuyor.</translation>
    </message>
    <message>
        <source>Version %1 (build %2) of %3 is available.

Do you want to download and install it now?</source>
        <translation>%3 uygulamasının %1 sürümü (derleme %2) yayımlandı.

Şimdi indirip kurmak ister misiniz?</translation>
    </message>
    <message>
        <source>Downloading %1 %2…
%3 of %4</source>
        <translation>%1 %2 indiriliyor…
%3 / %4</translation>
    </message>
    <message>
        <source>Downloading %1 %2…
%3</source>
        <translation>%1 %2 indiriliyor…
%3</translation>
    </message>
    <message>
        <source>Version %1 of %2 is being installed.

Please restart %2 once its installer has finished.</source>
        <translation>%2 uygulamasının %1 sürümü kuruluyor.

Kurulum bittikten sonra lütfen %2 uygulamasını yeniden başlatın.</translation>
    </message>
    <message>
        <source>Software Update</source>
        <translation>Yazılım Güncelleme</translation>
    </message>
    <message>
        <source>Downloading %1 %2…</source>
        <translation>%1 %2 indiriliyor…</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>İptal</translation>
    </message>
    <message>
        <source>The signature of the release information is too large to be a signature.</source>
        <translation>Sürüm bilgisinin imzası, bir imza olamayacak kadar büyük.</translation>
    </message>
    <message>
        <source>The release information from the update server was refused: it is not signed (its signature %1 could not be fetched: HTTP %2 %3).</source>
        <translation>Güncelleme sunucusundan gelen sürüm bilgisi reddedildi: imzalı değil (%1 imzası alınamadı: HTTP %2 %3).</translation>
    </message>
    <message>
        <source>The release information from the update server was refused: %1.</source>
        <translation>Güncelleme sunucusundan gelen sürüm bilgisi reddedildi: %1.</translation>
    </message>
    <message>
        <source>The installer cannot be downloaded: %1.</source>
        <translation>Yükleyici indirilemiyor: %1.</translation>
    </message>
    <message>
        <source>The downloaded installer could not be read again before its start and was deleted.</source>
        <translation>İndirilen yükleyici, başlatılmadan önce yeniden okunamadı ve silindi.</translation>
    </message>
    <message>
        <source>The downloaded installer was changed after its check and was deleted; it was not started.</source>
        <translation>İndirilen yükleyici denetlendikten sonra değiştirildiği için silindi; başlatılmadı.</translation>
    </message>
    <message>
        <source>The installer was not started: %1.</source>
        <translation>Yükleyici başlatılmadı: %1.</translation>
    </message>
    <message>
        <source>The installer &quot;%1&quot; could not be started and was deleted.</source>
        <translation>&quot;%1&quot; yükleyicisi başlatılamadı ve silindi.</translation>
    </message>
</context>
</TS>
