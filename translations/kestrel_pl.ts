<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="pl">
<context>
    <name>AboutDialog</name>
    <message>
        <source>Version %1</source>
        <translation>Wersja %1</translation>
    </message>
    <message>
        <source>System information</source>
        <translation>Informacje o systemie</translation>
    </message>
</context>
<context>
    <name>FeedSignature</name>
    <message>
        <source>Could not create a temporary folder for the signature check: %1</source>
        <translation>Nie można utworzyć folderu tymczasowego do sprawdzenia podpisu: %1</translation>
    </message>
    <message>
        <source>it is signed by another key than the application&apos;s release key</source>
        <translation>są podpisane innym kluczem niż klucz wydań aplikacji</translation>
    </message>
    <message>
        <source>its signature does not match its content</source>
        <translation>ich podpis nie zgadza się z treścią</translation>
    </message>
    <message>
        <source>its signature is not a valid signature</source>
        <translation>ich podpis nie jest prawidłowym podpisem</translation>
    </message>
    <message>
        <source>Could not write &quot;%1&quot; for the signature check: %2</source>
        <translation>Nie można zapisać „%1” do sprawdzenia podpisu: %2</translation>
    </message>
    <message>
        <source>gpgv (%1) could not be started</source>
        <translation>nie można uruchomić gpgv (%1)</translation>
    </message>
    <message>
        <source>gpgv did not answer within %1 seconds</source>
        <translation>gpgv nie odpowiedział w ciągu %1 s</translation>
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
        <translation>Rozdzielczość</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Rozmiar</translation>
    </message>
</context>
<context>
    <name>IdentifierDialog</name>
    <message>
        <source>Machine identifier</source>
        <translation>Identyfikator komputera</translation>
    </message>
    <message>
        <source>The identifier of this computer:</source>
        <translation>Identyfikator tego komputera:</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopiuj</translation>
    </message>
    <message>
        <source>Copied to the clipboard.</source>
        <translation>Skopiowano do schowka.</translation>
    </message>
</context>
<context>
    <name>Identity</name>
    <message>
        <source>simple downloader from YouTube, full version is on Loomfield site</source>
        <translation>prosty program do pobierania z YouTube, pełna wersja jest na stronie Loomfield</translation>
    </message>
</context>
<context>
    <name>InstallerDownload</name>
    <message>
        <source>Could not save the installer as &quot;%1&quot;: %2</source>
        <translation>Nie można zapisać instalatora jako „%1”: %2</translation>
    </message>
    <message>
        <source>The installer download was redirected to an address that is not allowed: %1.</source>
        <translation>Pobieranie instalatora zostało przekierowane na niedozwolony adres: %1.</translation>
    </message>
    <message>
        <source>The installer could not be downloaded: the server answered HTTP %1 %2.</source>
        <translation>Nie można pobrać instalatora: serwer odpowiedział HTTP %1 %2.</translation>
    </message>
    <message>
        <source>The installer download stalled: nothing arrived for %1 seconds.</source>
        <translation>Pobieranie instalatora utknęło: od %1 s nic nie dotarło.</translation>
    </message>
    <message>
        <source>Could not reach the update server: %1</source>
        <translation>Nie można połączyć się z serwerem aktualizacji: %1</translation>
    </message>
    <message>
        <source>The downloaded installer is damaged (checksum mismatch) and was deleted.</source>
        <translation>Pobrany instalator jest uszkodzony (niezgodna suma kontrolna) i został usunięty.</translation>
    </message>
    <message>
        <source>Could not replace the earlier file &quot;%1&quot;.</source>
        <translation>Nie można zastąpić wcześniejszego pliku „%1”.</translation>
    </message>
    <message>
        <source>Could not rename the installer to &quot;%1&quot;: %2</source>
        <translation>Nie można zmienić nazwy instalatora na „%1”: %2</translation>
    </message>
    <message>
        <source>The installer was refused: it is larger than %1, more than an installer may be.</source>
        <translation>Instalator został odrzucony: przekracza %1, czyli maksymalny rozmiar instalatora.</translation>
    </message>
</context>
<context>
    <name>InstallerFolder</name>
    <message>
        <source>there is no folder for the installer on this system</source>
        <translation>w tym systemie nie ma folderu na instalator</translation>
    </message>
    <message>
        <source>the folder &quot;%1&quot; could not be made ready for the installer</source>
        <extracomment>%1 is the folder&apos;s path.</extracomment>
        <translation>nie można przygotować folderu „%1” na instalator</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not lie in the installer&apos;s own folder</source>
        <extracomment>%1 is the installer&apos;s path. Shown inside &quot;The installer was not started: %1.&quot;</extracomment>
        <translation>„%1” nie leży we własnym folderze instalatora</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a program (.exe)</source>
        <extracomment>%1 is the installer&apos;s path. Shown inside &quot;The installer was not started: %1.&quot;</extracomment>
        <translation>„%1” nie jest programem (.exe)</translation>
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
        <translation>Pobierz film</translation>
    </message>
    <message>
        <source>Opens the page where you paste the address of a YouTube video</source>
        <translation>Otwiera stronę, na której wklejasz adres filmu z YouTube</translation>
    </message>
    <message>
        <source>Go To Loomfield: Access 1000&apos;s of Sites</source>
        <translation>Przejdź do Loomfield: ponad 1000 serwisów</translation>
    </message>
    <message>
        <source>Opens the Loomfield web site in your browser</source>
        <translation>Otwiera stronę Loomfield w przeglądarce</translation>
    </message>
    <message>
        <source>Go To Loomfield&lt;br&gt;Access 1000&apos;s of Sites</source>
        <translation>Przejdź do Loomfield&lt;br&gt;Ponad 1000 serwisów</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Wstecz</translation>
    </message>
    <message>
        <source>Returns to the start page</source>
        <translation>Wraca do strony startowej</translation>
    </message>
    <message>
        <source>Video address</source>
        <translation>Adres filmu</translation>
    </message>
    <message>
        <source>The address of a YouTube video; press Enter to look it up</source>
        <translation>Adres filmu z YouTube; naciśnij Enter, aby go wyszukać</translation>
    </message>
    <message>
        <source>Process</source>
        <translation>Przetwórz</translation>
    </message>
    <message>
        <source>Looks up the video and lists its formats</source>
        <translation>Wyszukuje film i wyświetla jego formaty</translation>
    </message>
    <message>
        <source>Stops looking up the video and returns to its address</source>
        <translation>Przerywa wyszukiwanie filmu i wraca do jego adresu</translation>
    </message>
    <message>
        <source>Title of the video</source>
        <translation>Tytuł filmu</translation>
    </message>
    <message>
        <source>title</source>
        <translation>tytuł</translation>
    </message>
    <message>
        <source>Duration of the video</source>
        <translation>Czas trwania filmu</translation>
    </message>
    <message>
        <source>00:00:00</source>
        <translation>00:00:00</translation>
    </message>
    <message>
        <source>Looking up the video</source>
        <translation>Wyszukiwanie filmu</translation>
    </message>
    <message>
        <source>Shown until the video&apos;s formats are listed</source>
        <translation>Widoczne, dopóki nie pojawi się lista formatów filmu</translation>
    </message>
    <message>
        <source>Formats</source>
        <translation>Formaty</translation>
    </message>
    <message>
        <source>The video&apos;s formats, largest first: type, resolution and size. Press Enter or click a format to download it</source>
        <translation>Formaty filmu, od największego: typ, rozdzielczość i rozmiar. Naciśnij Enter lub kliknij format, aby go pobrać</translation>
    </message>
    <message>
        <source>Returns to the list of formats</source>
        <translation>Wraca do listy formatów</translation>
    </message>
    <message>
        <source>Downloading: </source>
        <translation>Pobieranie: </translation>
    </message>
    <message>
        <source>Video Successfully Downloaded</source>
        <translation>Film pobrany pomyślnie</translation>
    </message>
    <message>
        <source>Download progress</source>
        <translation>Postęp pobierania</translation>
    </message>
    <message>
        <source>How much of the video has been downloaded</source>
        <translation>Jaka część filmu została już pobrana</translation>
    </message>
    <message>
        <source>Starts again with the address of another video</source>
        <translation>Zaczyna od nowa z adresem innego filmu</translation>
    </message>
    <message>
        <source>Start Over</source>
        <translation>Od nowa</translation>
    </message>
    <message>
        <source>Opens the folder with the downloaded video</source>
        <translation>Otwiera folder z pobranym filmem</translation>
    </message>
    <message>
        <source>Open Folder with File</source>
        <translation>Otwórz folder z plikiem</translation>
    </message>
    <message>
        <source>Stops the download</source>
        <translation>Przerywa pobieranie</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Anuluj</translation>
    </message>
    <message>
        <source>Please wait</source>
        <translation>Proszę czekać</translation>
    </message>
    <message>
        <source>Shown while the program is busy</source>
        <translation>Widoczne, gdy program jest zajęty</translation>
    </message>
    <message>
        <source>| %1 sec.</source>
        <translation>| %1 s</translation>
    </message>
    <message>
        <source>Cannot request metadata</source>
        <translation>Nie można pobrać metadanych</translation>
    </message>
    <message>
        <source>crash exit on metadata request</source>
        <translation>awaria podczas pobierania metadanych</translation>
    </message>
    <message>
        <source>crash exit on formats request</source>
        <translation>awaria podczas pobierania listy formatów</translation>
    </message>
    <message>
        <source>crash exit at downloading process</source>
        <translation>awaria podczas pobierania filmu</translation>
    </message>
    <message>
        <source>format count error</source>
        <translation>błąd liczby formatów</translation>
    </message>
    <message>
        <source>cannot start the downloader tool</source>
        <translation>nie można uruchomić narzędzia do pobierania</translation>
    </message>
    <message>
        <source>indefinite</source>
        <translation>nieznany błąd</translation>
    </message>
    <message>
        <source>WARNING</source>
        <translation>OSTRZEŻENIE</translation>
    </message>
    <message>
        <source>WARNING: You must provide at least some valid YouTube URL to proceed</source>
        <translation>OSTRZEŻENIE: aby kontynuować, podaj prawidłowy adres filmu z YouTube</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Tytuł</translation>
    </message>
    <message>
        <source>&lt;h3&gt;ERROR:&lt;/h3&gt;%1&lt;hr&gt;&lt;i&gt;Code: #0x%2&lt;/i&gt;</source>
        <extracomment>%1 is the kind of failure, %2 its code in hexadecimal.</extracomment>
        <translation>&lt;h3&gt;BŁĄD:&lt;/h3&gt;%1&lt;hr&gt;&lt;i&gt;Kod: #0x%2&lt;/i&gt;</translation>
    </message>
    <message>
        <source>ERROR</source>
        <translation>BŁĄD</translation>
    </message>
    <message>
        <source>Unable to update. Please contact support</source>
        <translation>Nie można zaktualizować. Skontaktuj się z pomocą techniczną</translation>
    </message>
    <message>
        <source>Success</source>
        <translation>Aktualizacja zakończona</translation>
    </message>
    <message>
        <source>KestrelDownloader was successfully updated</source>
        <translation>KestrelDownloader został pomyślnie zaktualizowany</translation>
    </message>
    <message>
        <source>Manually Update Software</source>
        <translation>Zaktualizuj program ręcznie</translation>
    </message>
    <message>
        <source>Logging enabled</source>
        <translation>Rejestrowanie włączone</translation>
    </message>
    <message>
        <source>Change Scale Size</source>
        <translation>Zmień skalę</translation>
    </message>
    <message>
        <source>%1%</source>
        <extracomment>A display scale in percent, as 130%.</extracomment>
        <translation>%1%</translation>
    </message>
    <message>
        <source>Show UUID</source>
        <translation>Pokaż UUID</translation>
    </message>
    <message>
        <source>About</source>
        <translation>O programie</translation>
    </message>
    <message>
        <source>%1 version: %2</source>
        <translation>%1, wersja %2</translation>
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
        <translation>brak pola „releaseNumber” lub nie jest ono liczbą</translation>
    </message>
    <message>
        <source>&quot;releaseNumber&quot; is not a positive whole number</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>pole „releaseNumber” nie jest dodatnią liczbą całkowitą</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is missing or not a text</source>
        <extracomment>%1 is a key of the release feed file, as &quot;version&quot;; it stays as it is.</extracomment>
        <translation>brak pola „%1” lub nie jest ono tekstem</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot;: %2</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;), %2 what is wrong with its entry.</extracomment>
        <translation>instalator dla „%1”: %2</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot;: &quot;sha256&quot; is not 64 hexadecimal digits</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;); &quot;sha256&quot; is a key of that file and stays as it is.</extracomment>
        <translation>instalator dla „%1”: „sha256” nie składa się z 64 cyfr szesnastkowych</translation>
    </message>
    <message>
        <source>not valid JSON (%1 at offset %2)</source>
        <extracomment>%1 is the JSON reader&apos;s own message, %2 the position in the file where it stopped.</extracomment>
        <translation>nieprawidłowy JSON (%1 na pozycji %2)</translation>
    </message>
    <message>
        <source>the document is not a JSON object</source>
        <translation>dokument nie jest obiektem JSON</translation>
    </message>
    <message>
        <source>&quot;version&quot; is too long</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>pole „version” jest za długie</translation>
    </message>
    <message>
        <source>&quot;buildDate&quot; is not of the form NN.NNNN</source>
        <extracomment>&quot;buildDate&quot; is a key of the release feed file and stays as it is; NN.NNNN shows the form of its value (two digits, a dot, four digits).</extracomment>
        <translation>pole „buildDate” nie ma postaci NN.NNNN</translation>
    </message>
    <message>
        <source>&quot;installers&quot; is missing or not an object</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>brak pola „installers” lub nie jest ono obiektem</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot; is not an object</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;).</extracomment>
        <translation>wpis instalatora dla „%1” nie jest obiektem</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a usable address</source>
        <extracomment>%1 is a web address. Shown inside &quot;The update address %1.&quot; and similar messages.</extracomment>
        <translation>„%1” nie jest prawidłowym adresem</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was refused: only secure https addresses are accepted</source>
        <extracomment>%1 is a web address. Shown inside &quot;The update address %1.&quot; and similar messages.</extracomment>
        <translation>„%1” został odrzucony: akceptowane są tylko bezpieczne adresy https</translation>
    </message>
</context>
<context>
    <name>SysInfoPlugin</name>
    <message>
        <source> (build %1)</source>
        <translation> (kompilacja %1)</translation>
    </message>
    <message>
        <source>Operating system: %1</source>
        <translation>System operacyjny: %1</translation>
    </message>
    <message>
        <source>Kernel: %1 %2</source>
        <translation>Jądro: %1 %2</translation>
    </message>
    <message>
        <source>CPU architecture: %1</source>
        <translation>Architektura procesora: %1</translation>
    </message>
    <message>
        <source>Qt version: %1</source>
        <translation>Wersja Qt: %1</translation>
    </message>
</context>
<context>
    <name>UpdaterPlugin</name>
    <message>
        <source>The update address %1.</source>
        <translation>Adres aktualizacji %1.</translation>
    </message>
    <message>
        <source>The update server redirected to an address that is not allowed: %1.</source>
        <translation>Serwer aktualizacji przekierował na niedozwolony adres: %1.</translation>
    </message>
    <message>
        <source>The release information from the update server is too large to be a release feed.</source>
        <translation>Informacje o wydaniach z serwera aktualizacji są za duże jak na kanał wydań.</translation>
    </message>
    <message>
        <source>Could not get the release information: the update server answered HTTP %1 %2.</source>
        <translation>Nie można pobrać informacji o wydaniach: serwer aktualizacji odpowiedział HTTP %1 %2.</translation>
    </message>
    <message>
        <source>The update server did not answer within %1 seconds.</source>
        <translation>Serwer aktualizacji nie odpowiedział w ciągu %1 s.</translation>
    </message>
    <message>
        <source>Could not reach the update server: %1</source>
        <translation>Nie można połączyć się z serwerem aktualizacji: %1</translation>
    </message>
    <message>
        <source>The release information from the update server is not readable: %1.</source>
        <translation>Nie można odczytać informacji o wydaniach z serwera aktualizacji: %1.</translation>
    </message>
    <message>
        <source>You have the latest version of %1.

The newest release on the update server is %2 (build %3).</source>
        <translation>Masz najnowszą wersję programu %1.

Najnowsze wydanie na serwerze aktualizacji to %2 (kompilacja %3).</translation>
    </message>
    <message>
        <source>Version %1 of %2 is available, but the update server offers no installer for this system.</source>
        <translation>Dostępna jest wersja %1 programu %2, ale serwer aktualizacji nie oferuje instalatora dla tego systemu.</translation>
    </message>
    <message>
        <source>Version %1 (build %2) of %3 is available.

Do you want to download and install it now?</source>
        <translation>Dostępna jest wersja %1 (kompilacja %2) programu %3.

Czy pobrać ją i zainstalować teraz?</translation>
    </message>
    <message>
        <source>Downloading %1 %2…
%3 of %4</source>
        <translation>Pobieranie %1 %2…
%3 z %4</translation>
    </message>
    <message>
        <source>Downloading %1 %2…
%3</source>
        <translation>Pobieranie %1 %2…
%3</translation>
    </message>
    <message>
        <source>Version %1 of %2 is being installed.

Please restart %2 once its installer has finished.</source>
        <translation>Trwa instalacja wersji %1 programu %2.

Uruchom ponownie %2 po zakończeniu instalacji.</translation>
    </message>
    <message>
        <source>Software Update</source>
        <translation>Aktualizacja oprogramowania</translation>
    </message>
    <message>
        <source>Downloading %1 %2…</source>
        <translation>Pobieranie %1 %2…</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Anuluj</translation>
    </message>
    <message>
        <source>The signature of the release information is too large to be a signature.</source>
        <translation>Podpis informacji o wydaniach jest za duży jak na podpis.</translation>
    </message>
    <message>
        <source>The release information from the update server was refused: it is not signed (its signature %1 could not be fetched: HTTP %2 %3).</source>
        <translation>Informacje o wydaniach z serwera aktualizacji zostały odrzucone: nie są podpisane (nie można pobrać ich podpisu %1: HTTP %2 %3).</translation>
    </message>
    <message>
        <source>The release information from the update server was refused: %1.</source>
        <translation>Informacje o wydaniach z serwera aktualizacji zostały odrzucone: %1.</translation>
    </message>
    <message>
        <source>The installer cannot be downloaded: %1.</source>
        <translation>Nie można pobrać instalatora: %1.</translation>
    </message>
    <message>
        <source>The downloaded installer could not be read again before its start and was deleted.</source>
        <translation>Nie można ponownie odczytać pobranego instalatora przed uruchomieniem, więc został usunięty.</translation>
    </message>
    <message>
        <source>The downloaded installer was changed after its check and was deleted; it was not started.</source>
        <translation>Pobrany instalator został zmieniony po sprawdzeniu, więc go usunięto; nie został uruchomiony.</translation>
    </message>
    <message>
        <source>The installer was not started: %1.</source>
        <translation>Instalator nie został uruchomiony: %1.</translation>
    </message>
    <message>
        <source>The installer &quot;%1&quot; could not be started and was deleted.</source>
        <translation>Nie można uruchomić instalatora „%1”, więc został usunięty.</translation>
    </message>
</context>
</TS>
