<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="uk">
<context>
    <name>AboutDialog</name>
    <message>
        <source>Version %1</source>
        <translation>Версія %1</translation>
    </message>
    <message>
        <source>System information</source>
        <translation>Відомості про систему</translation>
    </message>
</context>
<context>
    <name>FeedSignature</name>
    <message>
        <source>Could not create a temporary folder for the signature check: %1</source>
        <translation>Не вдалося створити тимчасову теку для перевірки підпису: %1</translation>
    </message>
    <message>
        <source>it is signed by another key than the application&apos;s release key</source>
        <translation>їх підписано не ключем випусків програми, а іншим ключем</translation>
    </message>
    <message>
        <source>its signature does not match its content</source>
        <translation>їхній підпис не відповідає вмісту</translation>
    </message>
    <message>
        <source>its signature is not a valid signature</source>
        <translation>їхній підпис недійсний</translation>
    </message>
    <message>
        <source>Could not write &quot;%1&quot; for the signature check: %2</source>
        <translation>Не вдалося записати «%1» для перевірки підпису: %2</translation>
    </message>
    <message>
        <source>gpgv (%1) could not be started</source>
        <translation>не вдалося запустити gpgv (%1)</translation>
    </message>
    <message>
        <source>gpgv did not answer within %1 seconds</source>
        <translation>gpgv не відповів за %1 с</translation>
    </message>
</context>
<context>
    <name>FormatTableModel</name>
    <message>
        <source>Type</source>
        <translation>Тип</translation>
    </message>
    <message>
        <source>ID.</source>
        <translation>ID</translation>
    </message>
    <message>
        <source>Resolution</source>
        <translation>Роздільність</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Розмір</translation>
    </message>
</context>
<context>
    <name>IdentifierDialog</name>
    <message>
        <source>Machine identifier</source>
        <translation>Ідентифікатор комп&apos;ютера</translation>
    </message>
    <message>
        <source>The identifier of this computer:</source>
        <translation>Ідентифікатор цього комп&apos;ютера:</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Копіювати</translation>
    </message>
    <message>
        <source>Copied to the clipboard.</source>
        <translation>Скопійовано до буфера обміну.</translation>
    </message>
</context>
<context>
    <name>Identity</name>
    <message>
        <source>simple downloader from YouTube, full version is on Loomfield site</source>
        <translation>простий завантажувач відео з YouTube, повна версія — на сайті Loomfield</translation>
    </message>
</context>
<context>
    <name>InstallerDownload</name>
    <message>
        <source>Could not save the installer as &quot;%1&quot;: %2</source>
        <translation>Не вдалося зберегти інсталятор як «%1»: %2</translation>
    </message>
    <message>
        <source>The installer download was redirected to an address that is not allowed: %1.</source>
        <translation>Завантаження інсталятора переспрямовано на недозволену адресу: %1.</translation>
    </message>
    <message>
        <source>The installer could not be downloaded: the server answered HTTP %1 %2.</source>
        <translation>Не вдалося завантажити інсталятор: сервер відповів HTTP %1 %2.</translation>
    </message>
    <message>
        <source>The installer download stalled: nothing arrived for %1 seconds.</source>
        <translation>Завантаження інсталятора зупинилося: за %1 с не надійшло жодного байта.</translation>
    </message>
    <message>
        <source>Could not reach the update server: %1</source>
        <translation>Не вдалося з&apos;єднатися із сервером оновлень: %1</translation>
    </message>
    <message>
        <source>The downloaded installer is damaged (checksum mismatch) and was deleted.</source>
        <translation>Завантажений інсталятор пошкоджено (контрольна сума не збігається), тому його вилучено.</translation>
    </message>
    <message>
        <source>Could not replace the earlier file &quot;%1&quot;.</source>
        <translation>Не вдалося замінити попередній файл «%1».</translation>
    </message>
    <message>
        <source>Could not rename the installer to &quot;%1&quot;: %2</source>
        <translation>Не вдалося перейменувати інсталятор на «%1»: %2</translation>
    </message>
    <message>
        <source>The installer was refused: it is larger than %1, more than an installer may be.</source>
        <translation>Інсталятор відхилено: його розмір перевищує %1 — межу для інсталятора.</translation>
    </message>
</context>
<context>
    <name>InstallerFolder</name>
    <message>
        <source>there is no folder for the installer on this system</source>
        <translation>у цій системі немає теки для інсталятора</translation>
    </message>
    <message>
        <source>the folder &quot;%1&quot; could not be made ready for the installer</source>
        <extracomment>%1 is the folder&apos;s path.</extracomment>
        <translation>не вдалося підготувати теку «%1» для інсталятора</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not lie in the installer&apos;s own folder</source>
        <extracomment>%1 is the installer&apos;s path. Shown inside &quot;The installer was not started: %1.&quot;</extracomment>
        <translation>«%1» розташовано не у власній теці інсталятора</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a program (.exe)</source>
        <extracomment>%1 is the installer&apos;s path. Shown inside &quot;The installer was not started: %1.&quot;</extracomment>
        <translation>«%1» не є програмою (.exe)</translation>
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
        <translation>Завантажити відео</translation>
    </message>
    <message>
        <source>Opens the page where you paste the address of a YouTube video</source>
        <translation>Відкриває сторінку, куди вставляють адресу відео з YouTube</translation>
    </message>
    <message>
        <source>Go To Loomfield: Access 1000&apos;s of Sites</source>
        <translation>Перейти на Loomfield: понад 1000 сайтів</translation>
    </message>
    <message>
        <source>Opens the Loomfield web site in your browser</source>
        <translation>Відкриває сайт Loomfield у браузері</translation>
    </message>
    <message>
        <source>Go To Loomfield&lt;br&gt;Access 1000&apos;s of Sites</source>
        <translation>Перейти на Loomfield&lt;br&gt;Понад 1000 сайтів</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Назад</translation>
    </message>
    <message>
        <source>Returns to the start page</source>
        <translation>Повертає на початкову сторінку</translation>
    </message>
    <message>
        <source>Video address</source>
        <translation>Адреса відео</translation>
    </message>
    <message>
        <source>The address of a YouTube video; press Enter to look it up</source>
        <translation>Адреса відео з YouTube; натисніть Enter, щоб знайти його</translation>
    </message>
    <message>
        <source>Process</source>
        <translation>Обробити</translation>
    </message>
    <message>
        <source>Looks up the video and lists its formats</source>
        <translation>Знаходить відео і показує його формати</translation>
    </message>
    <message>
        <source>Stops looking up the video and returns to its address</source>
        <translation>Припиняє пошук відео і повертає до його адреси</translation>
    </message>
    <message>
        <source>Title of the video</source>
        <translation>Назва відео</translation>
    </message>
    <message>
        <source>title</source>
        <translation>назва</translation>
    </message>
    <message>
        <source>Duration of the video</source>
        <translation>Тривалість відео</translation>
    </message>
    <message>
        <source>00:00:00</source>
        <translation>00:00:00</translation>
    </message>
    <message>
        <source>Looking up the video</source>
        <translation>Пошук відео</translation>
    </message>
    <message>
        <source>Shown until the video&apos;s formats are listed</source>
        <translation>Показується, доки не з&apos;явиться список форматів відео</translation>
    </message>
    <message>
        <source>Formats</source>
        <translation>Формати</translation>
    </message>
    <message>
        <source>The video&apos;s formats, largest first: type, resolution and size. Press Enter or click a format to download it</source>
        <translation>Формати відео, починаючи з найбільшого: тип, роздільність і розмір. Натисніть Enter або клацніть формат, щоб завантажити його</translation>
    </message>
    <message>
        <source>Returns to the list of formats</source>
        <translation>Повертає до списку форматів</translation>
    </message>
    <message>
        <source>Downloading: </source>
        <translation>Завантаження: </translation>
    </message>
    <message>
        <source>Video Successfully Downloaded</source>
        <translation>Відео успішно завантажено</translation>
    </message>
    <message>
        <source>Download progress</source>
        <translation>Перебіг завантаження</translation>
    </message>
    <message>
        <source>How much of the video has been downloaded</source>
        <translation>Яку частину відео вже завантажено</translation>
    </message>
    <message>
        <source>Starts again with the address of another video</source>
        <translation>Починає знову з адресою іншого відео</translation>
    </message>
    <message>
        <source>Start Over</source>
        <translation>Почати знову</translation>
    </message>
    <message>
        <source>Opens the folder with the downloaded video</source>
        <translation>Відкриває теку із завантаженим відео</translation>
    </message>
    <message>
        <source>Open Folder with File</source>
        <translation>Відкрити теку</translation>
    </message>
    <message>
        <source>Stops the download</source>
        <translation>Зупиняє завантаження</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Скасувати</translation>
    </message>
    <message>
        <source>Please wait</source>
        <translation>Зачекайте</translation>
    </message>
    <message>
        <source>Shown while the program is busy</source>
        <translation>Показується, поки програма зайнята</translation>
    </message>
    <message>
        <source>| %1 sec.</source>
        <translation>| %1 с</translation>
    </message>
    <message>
        <source>Cannot request metadata</source>
        <translation>Не вдалося отримати метадані</translation>
    </message>
    <message>
        <source>crash exit on metadata request</source>
        <translation>аварійне завершення під час запиту метаданих</translation>
    </message>
    <message>
        <source>crash exit on formats request</source>
        <translation>аварійне завершення під час запиту форматів</translation>
    </message>
    <message>
        <source>crash exit at downloading process</source>
        <translation>аварійне завершення під час завантаження</translation>
    </message>
    <message>
        <source>format count error</source>
        <translation>помилка в кількості форматів</translation>
    </message>
    <message>
        <source>cannot start the downloader tool</source>
        <translation>не вдається запустити завантажувач</translation>
    </message>
    <message>
        <source>indefinite</source>
        <translation>невідома помилка</translation>
    </message>
    <message>
        <source>WARNING</source>
        <translation>ПОПЕРЕДЖЕННЯ</translation>
    </message>
    <message>
        <source>WARNING: You must provide at least some valid YouTube URL to proceed</source>
        <translation>ПОПЕРЕДЖЕННЯ: щоб продовжити, вкажіть дійсну адресу відео YouTube</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Назва</translation>
    </message>
    <message>
        <source>&lt;h3&gt;ERROR:&lt;/h3&gt;%1&lt;hr&gt;&lt;i&gt;Code: #0x%2&lt;/i&gt;</source>
        <extracomment>%1 is the kind of failure, %2 its code in hexadecimal.</extracomment>
        <translation>&lt;h3&gt;ПОМИЛКА:&lt;/h3&gt;%1&lt;hr&gt;&lt;i&gt;Код: #0x%2&lt;/i&gt;</translation>
    </message>
    <message>
        <source>ERROR</source>
        <translation>ПОМИЛКА</translation>
    </message>
    <message>
        <source>Unable to update. Please contact support</source>
        <translation>Не вдалося оновити. Зверніться до служби підтримки</translation>
    </message>
    <message>
        <source>Success</source>
        <translation>Оновлення завершено</translation>
    </message>
    <message>
        <source>KestrelDownloader was successfully updated</source>
        <translation>KestrelDownloader успішно оновлено</translation>
    </message>
    <message>
        <source>Manually Update Software</source>
        <translation>Оновити програму вручну</translation>
    </message>
    <message>
        <source>Logging enabled</source>
        <translation>Журнал увімкнено</translation>
    </message>
    <message>
        <source>Change Scale Size</source>
        <translation>Змінити масштаб</translation>
    </message>
    <message>
        <source>%1%</source>
        <extracomment>A display scale in percent, as 130%.</extracomment>
        <translation>%1%</translation>
    </message>
    <message>
        <source>Show UUID</source>
        <translation>Показати UUID</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Про програму</translation>
    </message>
    <message>
        <source>%1 version: %2</source>
        <translation>%1, версія %2</translation>
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
        <translation>поле «releaseNumber» відсутнє або не є числом</translation>
    </message>
    <message>
        <source>&quot;releaseNumber&quot; is not a positive whole number</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>поле «releaseNumber» не є цілим додатним числом</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is missing or not a text</source>
        <extracomment>%1 is a key of the release feed file, as &quot;version&quot;; it stays as it is.</extracomment>
        <translation>поле «%1» відсутнє або не є текстом</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot;: %2</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;), %2 what is wrong with its entry.</extracomment>
        <translation>інсталятор для «%1»: %2</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot;: &quot;sha256&quot; is not 64 hexadecimal digits</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;); &quot;sha256&quot; is a key of that file and stays as it is.</extracomment>
        <translation>інсталятор для «%1»: «sha256» не складається з 64 шістнадцяткових цифр</translation>
    </message>
    <message>
        <source>not valid JSON (%1 at offset %2)</source>
        <extracomment>%1 is the JSON reader&apos;s own message, %2 the position in the file where it stopped.</extracomment>
        <translation>недійсний JSON (%1, позиція %2)</translation>
    </message>
    <message>
        <source>the document is not a JSON object</source>
        <translation>документ не є об&apos;єктом JSON</translation>
    </message>
    <message>
        <source>&quot;version&quot; is too long</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>поле «version» задовге</translation>
    </message>
    <message>
        <source>&quot;buildDate&quot; is not of the form NN.NNNN</source>
        <extracomment>&quot;buildDate&quot; is a key of the release feed file and stays as it is; NN.NNNN shows the form of its value (two digits, a dot, four digits).</extracomment>
        <translation>поле «buildDate» не має вигляду NN.NNNN</translation>
    </message>
    <message>
        <source>&quot;installers&quot; is missing or not an object</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>поле «installers» відсутнє або не є об&apos;єктом</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot; is not an object</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;).</extracomment>
        <translation>запис інсталятора для «%1» не є об&apos;єктом</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a usable address</source>
        <extracomment>%1 is a web address. Shown inside &quot;The update address %1.&quot; and similar messages.</extracomment>
        <translation>«%1» не є коректною адресою</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was refused: only secure https addresses are accepted</source>
        <extracomment>%1 is a web address. Shown inside &quot;The update address %1.&quot; and similar messages.</extracomment>
        <translation>«%1» відхилено: приймаються лише захищені адреси https</translation>
    </message>
</context>
<context>
    <name>SysInfoPlugin</name>
    <message>
        <source> (build %1)</source>
        <translation> (збірка %1)</translation>
    </message>
    <message>
        <source>Operating system: %1</source>
        <translation>Операційна система: %1</translation>
    </message>
    <message>
        <source>Kernel: %1 %2</source>
        <translation>Ядро: %1 %2</translation>
    </message>
    <message>
        <source>CPU architecture: %1</source>
        <translation>Архітектура процесора: %1</translation>
    </message>
    <message>
        <source>Qt version: %1</source>
        <translation>Версія Qt: %1</translation>
    </message>
</context>
<context>
    <name>UpdaterPlugin</name>
    <message>
        <source>The update address %1.</source>
        <translation>Адреса оновлення %1.</translation>
    </message>
    <message>
        <source>The update server redirected to an address that is not allowed: %1.</source>
        <translation>Сервер оновлень переспрямував на недозволену адресу: %1.</translation>
    </message>
    <message>
        <source>The release information from the update server is too large to be a release feed.</source>
        <translation>Відомості про випуски із сервера оновлень завеликі для стрічки випусків.</translation>
    </message>
    <message>
        <source>Could not get the release information: the update server answered HTTP %1 %2.</source>
        <translation>Не вдалося отримати відомості про випуски: сервер оновлень відповів HTTP %1 %2.</translation>
    </message>
    <message>
        <source>The update server did not answer within %1 seconds.</source>
        <translation>Сервер оновлень не відповів за %1 с.</translation>
    </message>
    <message>
        <source>Could not reach the update server: %1</source>
        <translation>Не вдалося з&apos;єднатися із сервером оновлень: %1</translation>
    </message>
    <message>
        <source>The release information from the update server is not readable: %1.</source>
        <translation>Не вдалося прочитати відомості про випуски із сервера оновлень: %1.</translation>
    </message>
    <message>
        <source>You have the latest version of %1.

The newest release on the update server is %2 (build %3).</source>
        <translation>У вас найновіша версія %1.

Найновіший випуск на сервері оновлень — %2 (збірка %3).</translation>
    </message>
    <message>
        <source>Version %1 of %2 is available, but the update server offers no installer for this system.</source>
        <translation>Доступна версія %1 програми %2, але сервер оновлень не пропонує інсталятора для цієї системи.</translation>
    </message>
    <message>
        <source>Version %1 (build %2) of %3 is available.

Do you want to download and install it now?</source>
        <translation>Доступна версія %1 (збірка %2) програми %3.

Завантажити та встановити її зараз?</translation>
    </message>
    <message>
        <source>Downloading %1 %2…
%3 of %4</source>
        <translation>Завантаження %1 %2…
%3 з %4</translation>
    </message>
    <message>
        <source>Downloading %1 %2…
%3</source>
        <translation>Завантаження %1 %2…
%3</translation>
    </message>
    <message>
        <source>Version %1 of %2 is being installed.

Please restart %2 once its installer has finished.</source>
        <translation>Встановлюється версія %1 програми %2.

Перезапустіть %2, коли інсталятор завершить роботу.</translation>
    </message>
    <message>
        <source>Software Update</source>
        <translation>Оновлення програми</translation>
    </message>
    <message>
        <source>Downloading %1 %2…</source>
        <translation>Завантаження %1 %2…</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Скасувати</translation>
    </message>
    <message>
        <source>The signature of the release information is too large to be a signature.</source>
        <translation>Підпис відомостей про випуски завеликий, щоб бути підписом.</translation>
    </message>
    <message>
        <source>The release information from the update server was refused: it is not signed (its signature %1 could not be fetched: HTTP %2 %3).</source>
        <translation>Відомості про випуски із сервера оновлень відхилено: їх не підписано (не вдалося отримати їхній підпис %1: HTTP %2 %3).</translation>
    </message>
    <message>
        <source>The release information from the update server was refused: %1.</source>
        <translation>Відомості про випуски із сервера оновлень відхилено: %1.</translation>
    </message>
    <message>
        <source>The installer cannot be downloaded: %1.</source>
        <translation>Неможливо завантажити інсталятор: %1.</translation>
    </message>
    <message>
        <source>The downloaded installer could not be read again before its start and was deleted.</source>
        <translation>Не вдалося повторно прочитати завантажений інсталятор перед запуском, тому його вилучено.</translation>
    </message>
    <message>
        <source>The downloaded installer was changed after its check and was deleted; it was not started.</source>
        <translation>Завантажений інсталятор змінився після перевірки, тому його вилучено й не запущено.</translation>
    </message>
    <message>
        <source>The installer was not started: %1.</source>
        <translation>Інсталятор не запущено: %1.</translation>
    </message>
    <message>
        <source>The installer &quot;%1&quot; could not be started and was deleted.</source>
        <translation>Не вдалося запустити інсталятор «%1», тому його вилучено.</translation>
    </message>
</context>
</TS>
