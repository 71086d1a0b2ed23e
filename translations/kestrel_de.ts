<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>AboutDialog</name>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>System information</source>
        <translation>Systeminformationen</translation>
    </message>
</context>
<context>
    <name>FeedSignature</name>
    <message>
        <source>Could not create a temporary folder for the signature check: %1</source>
        <translation>Für die Signaturprüfung konnte kein temporärer Ordner angelegt werden: %1</translation>
    </message>
    <message>
        <source>it is signed by another key than the application&apos;s release key</source>
        <translation>Sie sind mit einem anderen Schlüssel signiert als dem Release-Schlüssel der Anwendung</translation>
    </message>
    <message>
        <source>its signature does not match its content</source>
        <translation>Ihre Signatur passt nicht zu ihrem Inhalt</translation>
    </message>
    <message>
        <source>its signature is not a valid signature</source>
        <translation>Ihre Signatur ist keine gültige Signatur</translation>
    </message>
    <message>
        <source>Could not write &quot;%1&quot; for the signature check: %2</source>
        <translation>„%1“ konnte für die Signaturprüfung nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>gpgv (%1) could not be started</source>
        <translation>gpgv (%1) konnte nicht gestartet werden</translation>
    </message>
    <message>
        <source>gpgv did not answer within %1 seconds</source>
        <translation>gpgv hat nicht innerhalb von %1 Sekunden geantwortet</translation>
    </message>
</context>
<context>
    <name>FormatTableModel</name>
    <message>
        <source>Type</source>
        <translation>Typ</translation>
    </message>
    <message>
        <source>ID.</source>
        <translation>ID</translation>
    </message>
    <message>
        <source>Resolution</source>
        <translation>Auflösung</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
</context>
<context>
    <name>IdentifierDialog</name>
    <message>
        <source>Machine identifier</source>
        <translation>Rechnerkennung</translation>
    </message>
    <message>
        <source>The identifier of this computer:</source>
        <translation>Die Kennung dieses Computers:</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Copied to the clipboard.</source>
        <translation>In die Zwischenablage kopiert.</translation>
    </message>
</context>
<context>
    <name>Identity</name>
    <message>
        <source>simple downloader from YouTube, full version is on Loomfield site</source>
        <translation>einfacher Downloader für YouTube, die Vollversion gibt es auf der Loomfield-Website</translation>
    </message>
</context>
<context>
    <name>InstallerDownload</name>
    <message>
        <source>Could not save the installer as &quot;%1&quot;: %2</source>
        <translation>Das Installationsprogramm konnte nicht als „%1“ gespeichert werden: %2</translation>
    </message>
    <message>
        <source>The installer download was redirected to an address that is not allowed: %1.</source>
        <translation>Der Download des Installationsprogramms wurde an eine nicht zulässige Adresse umgeleitet: %1.</translation>
    </message>
    <message>
        <source>The installer could not be downloaded: the server answered HTTP %1 %2.</source>
        <translation>Das Installationsprogramm konnte nicht heruntergeladen werden: Der Server antwortete mit HTTP %1 %2.</translation>
    </message>
    <message>
        <source>The installer download stalled: nothing arrived for %1 seconds.</source>
        <translation>Der Download des Installationsprogramms stockt: Seit %1 Sekunden ist nichts mehr angekommen.</translation>
    </message>
    <message>
        <source>Could not reach the update server: %1</source>
        <translation>Der Update-Server ist nicht erreichbar: %1</translation>
    </message>
    <message>
        <source>The downloaded installer is damaged (checksum mismatch) and was deleted.</source>
        <translation>Das heruntergeladene Installationsprogramm ist beschädigt (Prüfsumme stimmt nicht) und wurde gelöscht.</translation>
    </message>
    <message>
        <source>Could not replace the earlier file &quot;%1&quot;.</source>
        <translation>Die vorhandene Datei „%1“ konnte nicht ersetzt werden.</translation>
    </message>
    <message>
        <source>Could not rename the installer to &quot;%1&quot;: %2</source>
        <translation>Das Installationsprogramm konnte nicht in „%1“ umbenannt werden: %2</translation>
    </message>
    <message>
        <source>The installer was refused: it is larger than %1, more than an installer may be.</source>
        <translation>Das Installationsprogramm wurde abgelehnt: Mit über %1 ist es größer, als ein Installationsprogramm sein darf.</translation>
    </message>
</context>
<context>
    <name>InstallerFolder</name>
    <message>
        <source>there is no folder for the installer on this system</source>
        <translation>Auf diesem System gibt es keinen Ordner für das Installationsprogramm</translation>
    </message>
    <message>
        <source>the folder &quot;%1&quot; could not be made ready for the installer</source>
        <extracomment>%1 is the folder&apos;s path.</extracomment>
        <translation>Der Ordner „%1“ konnte nicht für das Installationsprogramm vorbereitet werden</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not lie in the installer&apos;s own folder</source>
        <extracomment>%1 is the installer&apos;s path. Shown inside &quot;The installer was not started: %1.&quot;</extracomment>
        <translation>„%1“ liegt nicht im eigenen Ordner des Installationsprogramms</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a program (.exe)</source>
        <extracomment>%1 is the installer&apos;s path. Shown inside &quot;The installer was not started: %1.&quot;</extracomment>
        <translation>„%1“ ist kein Programm (.exe)</translation>
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
        <translation>Video herunterladen</translation>
    </message>
    <message>
        <source>Opens the page where you paste the address of a YouTube video</source>
        <translation>Öffnet die Seite, auf der Sie die Adresse eines YouTube-Videos einfügen</translation>
    </message>
    <message>
        <source>Go To Loomfield: Access 1000&apos;s of Sites</source>
        <translation>Zu Loomfield: Zugang zu über 1000 Websites</translation>
    </message>
    <message>
        <source>Opens the Loomfield web site in your browser</source>
        <translation>Öffnet die Loomfield-Website in Ihrem Browser</translation>
    </message>
    <message>
        <source>Go To Loomfield&lt;br&gt;Access 1000&apos;s of Sites</source>
        <translation>Zu Loomfield&lt;br&gt;Zugang zu über 1000 Websites</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Returns to the start page</source>
        <translation>Zurück zur Startseite</translation>
    </message>
    <message>
        <source>Video address</source>
        <translation>Videoadresse</translation>
    </message>
    <message>
        <source>The address of a YouTube video; press Enter to look it up</source>
        <translation>Die Adresse eines YouTube-Videos; mit der Eingabetaste wird es abgerufen</translation>
    </message>
    <message>
        <source>Process</source>
        <translation>Abrufen</translation>
    </message>
    <message>
        <source>Looks up the video and lists its formats</source>
        <translation>Ruft das Video ab und listet seine Formate auf</translation>
    </message>
    <message>
        <source>Stops looking up the video and returns to its address</source>
        <translation>Bricht das Abrufen ab und kehrt zur Adresse des Videos zurück</translation>
    </message>
    <message>
        <source>Title of the video</source>
        <translation>Titel des Videos</translation>
    </message>
    <message>
        <source>title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Duration of the video</source>
        <translation>Dauer des Videos</translation>
    </message>
    <message>
        <source>00:00:00</source>
        <translation>00:00:00</translation>
    </message>
    <message>
        <source>Looking up the video</source>
        <translation>Video wird abgerufen</translation>
    </message>
    <message>
        <source>Shown until the video&apos;s formats are listed</source>
        <translation>Wird angezeigt, bis die Formate des Videos aufgelistet sind</translation>
    </message>
    <message>
        <source>Formats</source>
        <translation>Formate</translation>
    </message>
    <message>
        <source>The video&apos;s formats, largest first: type, resolution and size. Press Enter or click a format to download it</source>
        <translation>Die Formate des Videos, das größte zuerst: Typ, Auflösung und Größe. Drücken Sie die Eingabetaste oder klicken Sie auf ein Format, um es herunterzuladen</translation>
    </message>
    <message>
        <source>Returns to the list of formats</source>
        <translation>Zurück zur Liste der Formate</translation>
    </message>
    <message>
        <source>Downloading: </source>
        <translation>Wird geladen: </translation>
    </message>
    <message>
        <source>Video Successfully Downloaded</source>
        <translation>Video erfolgreich heruntergeladen</translation>
    </message>
    <message>
        <source>Download progress</source>
        <translation>Download-Fortschritt</translation>
    </message>
    <message>
        <source>How much of the video has been downloaded</source>
        <translation>Wie viel des Videos schon heruntergeladen ist</translation>
    </message>
    <message>
        <source>Starts again with the address of another video</source>
        <translation>Beginnt neu mit der Adresse eines anderen Videos</translation>
    </message>
    <message>
        <source>Start Over</source>
        <translation>Neu beginnen</translation>
    </message>
    <message>
        <source>Opens the folder with the downloaded video</source>
        <translation>Öffnet den Ordner mit dem heruntergeladenen Video</translation>
    </message>
    <message>
        <source>Open Folder with File</source>
        <translation>Ordner mit Datei öffnen</translation>
    </message>
    <message>
        <source>Stops the download</source>
        <translation>Bricht den Download ab</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Please wait</source>
        <translation>Bitte warten</translation>
    </message>
    <message>
        <source>Shown while the program is busy</source>
        <translation>Wird angezeigt, solange das Programm beschäftigt ist</translation>
    </message>
    <message>
        <source>| %1 sec.</source>
        <translation>| %1 Sek.</translation>
    </message>
    <message>
        <source>Cannot request metadata</source>
        <translation>Metadaten können nicht abgerufen werden</translation>
    </message>
    <message>
        <source>crash exit on metadata request</source>
        <translation>Absturz beim Abrufen der Metadaten</translation>
    </message>
    <message>
        <source>crash exit on formats request</source>
        <translation>Absturz beim Abrufen der Formate</translation>
    </message>
    <message>
        <source>crash exit at downloading process</source>
        <translation>Absturz beim Herunterladen</translation>
    </message>
    <message>
        <source>format count error</source>
        <translation>Fehler bei der Anzahl der Formate</translation>
    </message>
    <message>
        <source>cannot start the downloader tool</source>
        <translation>Das Download-Programm kann nicht gestartet werden</translation>
    </message>
    <message>
        <source>indefinite</source>
        <translation>unbekannter Fehler</translation>
    </message>
    <message>
        <source>WARNING</source>
        <translation>WARNUNG</translation>
    </message>
    <message>
        <source>WARNING: You must provide at least some valid YouTube URL to proceed</source>
        <translation>WARNUNG: Bitte geben Sie eine gültige YouTube-Adresse ein, um fortzufahren</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>&lt;h3&gt;ERROR:&lt;/h3&gt;%1&lt;hr&gt;&lt;i&gt;Code: #0x%2&lt;/i&gt;</source>
        <extracomment>%1 is the kind of failure, %2 its code in hexadecimal.</extracomment>
        <translation>&lt;h3&gt;FEHLER:&lt;/h3&gt;%1&lt;hr&gt;&lt;i&gt;Code: #0x%2&lt;/i&gt;</translation>
    </message>
    <message>
        <source>ERROR</source>
        <translation>FEHLER</translation>
    </message>
    <message>
        <source>Unable to update. Please contact support</source>
        <translation>Aktualisierung fehlgeschlagen. Bitte wenden Sie sich an den Support</translation>
    </message>
    <message>
        <source>Success</source>
        <translation>Aktualisierung erfolgreich</translation>
    </message>
    <message>
        <source>KestrelDownloader was successfully updated</source>
        <translation>KestrelDownloader wurde erfolgreich aktualisiert</translation>
    </message>
    <message>
        <source>Manually Update Software</source>
        <translation>Software manuell aktualisieren</translation>
    </message>
    <message>
        <source>Logging enabled</source>
        <translation>Protokollierung aktiviert</translation>
    </message>
    <message>
        <source>Change Scale Size</source>
        <translation>Anzeigegröße ändern</translation>
    </message>
    <message>
        <source>%1%</source>
        <extracomment>A display scale in percent, as 130%.</extracomment>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>Show UUID</source>
        <translation>UUID anzeigen</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Über</translation>
    </message>
    <message>
        <source>%1 version: %2</source>
        <translation>%1, Version %2</translation>
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
        <translation>„releaseNumber“ fehlt oder ist keine Zahl</translation>
    </message>
    <message>
        <source>&quot;releaseNumber&quot; is not a positive whole number</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>„releaseNumber“ ist keine positive ganze Zahl</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is missing or not a text</source>
        <extracomment>%1 is a key of the release feed file, as &quot;version&quot;; it stays as it is.</extracomment>
        <translation>„%1“ fehlt oder ist kein Text</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot;: %2</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;), %2 what is wrong with its entry.</extracomment>
        <translation>Installationsprogramm für „%1“: %2</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot;: &quot;sha256&quot; is not 64 hexadecimal digits</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;); &quot;sha256&quot; is a key of that file and stays as it is.</extracomment>
        <translation>Installationsprogramm für „%1“: „sha256“ besteht nicht aus 64 Hexadezimalziffern</translation>
    </message>
    <message>
        <source>not valid JSON (%1 at offset %2)</source>
        <extracomment>%1 is the JSON reader&apos;s own message, %2 the position in the file where it stopped.</extracomment>
        <translation>kein gültiges JSON (%1 an Position %2)</translation>
    </message>
    <message>
        <source>the document is not a JSON object</source>
        <translation>Das Dokument ist kein JSON-Objekt</translation>
    </message>
    <message>
        <source>&quot;version&quot; is too long</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>„version“ ist zu lang</translation>
    </message>
    <message>
        <source>&quot;buildDate&quot; is not of the form NN.NNNN</source>
        <extracomment>&quot;buildDate&quot; is a key of the release feed file and stays as it is; NN.NNNN shows the form of its value (two digits, a dot, four digits).</extracomment>
        <translation>„buildDate“ hat nicht die Form NN.NNNN</translation>
    </message>
    <message>
        <source>&quot;installers&quot; is missing or not an object</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>„installers“ fehlt oder ist kein Objekt</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot; is not an object</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;).</extracomment>
        <translation>Der Eintrag des Installationsprogramms für „%1“ ist kein Objekt</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a usable address</source>
        <extracomment>%1 is a web address. Shown inside &quot;The update address %1.&quot; and similar messages.</extracomment>
        <translation>„%1“ ist keine verwendbare Adresse</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was refused: only secure https addresses are accepted</source>
        <extracomment>%1 is a web address. Shown inside &quot;The update address %1.&quot; and similar messages.</extracomment>
        <translation>„%1“ wurde abgelehnt: Es werden nur sichere https-Adressen akzeptiert</translation>
    </message>
</context>
<context>
    <name>SysInfoPlugin</name>
    <message>
        <source> (build %1)</source>
        <translation> (Build %1)</translation>
    </message>
    <message>
        <source>Operating system: %1</source>
        <translation>Betriebssystem: %1</translation>
    </message>
    <message>
        <source>Kernel: %1 %2</source>
        <translation>Kernel: %1 %2</translation>
    </message>
    <message>
        <source>CPU architecture: %1</source>
        <translation>Prozessorarchitektur: %1</translation>
    </message>
    <message>
        <source>Qt version: %1</source>
        <translation>Qt-Version: %1</translation>
    </message>
</context>
<context>
    <name>UpdaterPlugin</name>
    <message>
        <source>The update address %1.</source>
        <translation>Die Update-Adresse %1.</translation>
    </message>
    <message>
        <source>The update server redirected to an address that is not allowed: %1.</source>
        <translation>Der Update-Server hat an eine nicht zulässige Adresse umgeleitet: %1.</translation>
    </message>
    <message>
        <source>The release information from the update server is too large to be a release feed.</source>
        <translation>Die Release-Informationen des Update-Servers sind zu groß für einen Release-Feed.</translation>
    </message>
    <message>
        <source>Could not get the release information: the update server answered HTTP %1 %2.</source>
        <translation>Die Release-Informationen konnten nicht abgerufen werden: Der Update-Server antwortete mit HTTP %1 %2.</translation>
    </message>
    <message>
        <source>The update server did not answer within %1 seconds.</source>
        <translation>Der Update-Server hat nicht innerhalb von %1 Sekunden geantwortet.</translation>
    </message>
    <message>
        <source>Could not reach the update server: %1</source>
        <translation>Der Update-Server ist nicht erreichbar: %1</translation>
    </message>
    <message>
        <source>The release information from the update server is not readable: %1.</source>
        <translation>Die Release-Informationen des Update-Servers sind nicht lesbar: %1.</translation>
    </message>
    <message>
        <source>You have the latest version of %1.

The newest release on the update server is %2 (build %3).</source>
        <translation>Sie haben die neueste Version von %1.

Die neueste Version auf dem Update-Server ist %2 (Build %3).</translation>
    </message>
    <message>
        <source>Version %1 of %2 is available, but the update server offers no installer for this system.</source>
        <translation>Version %1 von %2 ist verfügbar, aber der Update-Server bietet kein Installationsprogramm für dieses System an.</translation>
    </message>
    <message>
        <source>Version %1 (build %2) of %3 is available.

Do you want to download and install it now?</source>
        <translation>Version %1 (Build %2) von %3 ist verfügbar.

Möchten Sie sie jetzt herunterladen und installieren?</translation>
    </message>
    <message>
        <source>Downloading %1 %2…
%3 of %4</source>
        <translation>%1 %2 wird heruntergeladen …
%3 von %4</translation>
    </message>
    <message>
        <source>Downloading %1 %2…
%3</source>
        <translation>%1 %2 wird heruntergeladen …
%3</translation>
    </message>
    <message>
        <source>Version %1 of %2 is being installed.

Please restart %2 once its installer has finished.</source>
        <translation>Version %1 von %2 wird installiert.

Bitte starten Sie %2 neu, sobald das Installationsprogramm fertig ist.</translation>
    </message>
    <message>
        <source>Software Update</source>
        <translation>Softwareaktualisierung</translation>
    </message>
    <message>
        <source>Downloading %1 %2…</source>
        <translation>%1 %2 wird heruntergeladen …</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>The signature of the release information is too large to be a signature.</source>
        <translation>Die Signatur der Release-Informationen ist zu groß für eine Signatur.</translation>
    </message>
    <message>
        <source>The release information from the update server was refused: it is not signed (its signature %1 could not be fetched: HTTP %2 %3).</source>
        <translation>Die Release-Informationen des Update-Servers wurden abgelehnt: Sie sind nicht signiert (ihre Signatur %1 konnte nicht abgerufen werden: HTTP %2 %3).</translation>
    </message>
    <message>
        <source>The release information from the update server was refused: %1.</source>
        <translation>Die Release-Informationen des Update-Servers wurden abgelehnt: %1.</translation>
    </message>
    <message>
        <source>The installer cannot be downloaded: %1.</source>
        <translation>Das Installationsprogramm kann nicht heruntergeladen werden: %1.</translation>
    </message>
    <message>
        <source>The downloaded installer could not be read again before its start and was deleted.</source>
        <translation>Das heruntergeladene Installationsprogramm konnte vor dem Start nicht erneut gelesen werden und wurde gelöscht.</translation>
    </message>
    <message>
        <source>The downloaded installer was changed after its check and was deleted; it was not started.</source>
        <translation>Das heruntergeladene Installationsprogramm wurde nach seiner Prüfung verändert und deshalb gelöscht; es wurde nicht gestartet.</translation>
    </message>
    <message>
        <source>The installer was not started: %1.</source>
        <translation>Das Installationsprogramm wurde nicht gestartet: %1.</translation>
    </message>
    <message>
        <source>The installer &quot;%1&quot; could not be started and was deleted.</source>
        <translation>Das Installationsprogramm „%1“ konnte nicht gestartet werden und wurde gelöscht.</translation>
    </message>
</context>
</TS>
