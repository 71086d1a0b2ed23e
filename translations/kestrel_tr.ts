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
        <source>Could not find or create the download folder &quot;%1&quot;.</source>
        <translation>&quot;%1&quot; indirme klasörü bulunamadı veya oluşturulamadı.</translation>
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
        <source>The installer was saved as &quot;%1&quot; but could not be started. Please open it yourself.</source>
        <translation>Yükleyici &quot;%1&quot; olarak kaydedildi ancak başlatılamadı. Lütfen kendiniz açın.</translation>
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
</context>
</TS>
