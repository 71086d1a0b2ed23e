<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru">
<context>
    <name>AboutDialog</name>
    <message>
        <source>Version %1</source>
        <translation>Версия %1</translation>
    </message>
    <message>
        <source>System information</source>
        <translation>Сведения о системе</translation>
    </message>
</context>
<context>
    <name>FeedSignature</name>
    <message>
        <source>Could not create a temporary folder for the signature check: %1</source>
        <translation>Не удалось создать временную папку для проверки подписи: %1</translation>
    </message>
    <message>
        <source>it is signed by another key than the application&apos;s release key</source>
        <translation>они подписаны не ключом выпусков программы, а другим ключом</translation>
    </message>
    <message>
        <source>its signature does not match its content</source>
        <translation>их подпись не соответствует содержимому</translation>
    </message>
    <message>
        <source>its signature is not a valid signature</source>
        <translation>их подпись недействительна</translation>
    </message>
    <message>
        <source>Could not write &quot;%1&quot; for the signature check: %2</source>
        <translation>Не удалось записать «%1» для проверки подписи: %2</translation>
    </message>
    <message>
        <source>gpgv (%1) could not be started</source>
        <translation>не удалось запустить gpgv (%1)</translation>
    </message>
    <message>
        <source>gpgv did not answer within %1 seconds</source>
        <translation>gpgv не ответил за %1 с</translation>
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
        <translation>Разрешение</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Размер</translation>
    </message>
</context>
<context>
    <name>IdentifierDialog</name>
    <message>
        <source>Machine identifier</source>
        <translation>Идентификатор компьютера</translation>
    </message>
    <message>
        <source>The identifier of this computer:</source>
        <translation>Идентификатор этого компьютера:</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Копировать</translation>
    </message>
    <message>
        <source>Copied to the clipboard.</source>
        <translation>Скопировано в буфер обмена.</translation>
    </message>
</context>
<context>
    <name>Identity</name>
    <message>
        <source>simple downloader from YouTube, full version is on Loomfield site</source>
        <translation>простой загрузчик видео с YouTube, полная версия — на сайте Loomfield</translation>
    </message>
</context>
<context>
    <name>InstallerDownload</name>
    <message>
        <source>Could not save the installer as &quot;%1&quot;: %2</source>
        <translation>Не удалось сохранить установщик как «%1»: %2</translation>
    </message>
    <message>
        <source>The installer download was redirected to an address that is not allowed: %1.</source>
        <translation>Загрузка установщика перенаправлена на недопустимый адрес: %1.</translation>
    </message>
    <message>
        <source>The installer could not be downloaded: the server answered HTTP %1 %2.</source>
        <translation>Не удалось скачать установщик: сервер ответил HTTP %1 %2.</translation>
    </message>
    <message>
        <source>The installer download stalled: nothing arrived for %1 seconds.</source>
        <translation>Загрузка установщика остановилась: за %1 с не получено ни байта.</translation>
    </message>
    <message>
        <source>Could not reach the update server: %1</source>
        <translation>Не удалось связаться с сервером обновлений: %1</translation>
    </message>
    <message>
        <source>The downloaded installer is damaged (checksum mismatch) and was deleted.</source>
        <translation>Скачанный установщик повреждён (контрольная сумма не совпадает) и удалён.</translation>
    </message>
    <message>
        <source>Could not replace the earlier file &quot;%1&quot;.</source>
        <translation>Не удалось заменить прежний файл «%1».</translation>
    </message>
    <message>
        <source>Could not rename the installer to &quot;%1&quot;: %2</source>
        <translation>Не удалось переименовать установщик в «%1»: %2</translation>
    </message>
    <message>
        <source>The installer was refused: it is larger than %1, more than an installer may be.</source>
        <translation>Установщик отклонён: его размер превышает %1 — предел для установщика.</translation>
    </message>
</context>
<context>
    <name>InstallerFolder</name>
    <message>
        <source>there is no folder for the installer on this system</source>
        <translation>в этой системе нет папки для установщика</translation>
    </message>
    <message>
        <source>the folder &quot;%1&quot; could not be made ready for the installer</source>
        <extracomment>%1 is the folder&apos;s path.</extracomment>
        <translation>не удалось подготовить папку «%1» для установщика</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not lie in the installer&apos;s own folder</source>
        <extracomment>%1 is the installer&apos;s path. Shown inside &quot;The installer was not started: %1.&quot;</extracomment>
        <translation>«%1» находится не в собственной папке установщика</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a program (.exe)</source>
        <extracomment>%1 is the installer&apos;s path. Shown inside &quot;The installer was not started: %1.&quot;</extracomment>
        <translation>«%1» не является программой (.exe)</translation>
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
        <translation>Скачать видео</translation>
    </message>
    <message>
        <source>Opens the page where you paste the address of a YouTube video</source>
        <translation>Открывает страницу, куда вставляется адрес видео с YouTube</translation>
    </message>
    <message>
        <source>Go To Loomfield: Access 1000&apos;s of Sites</source>
        <translation>Перейти на Loomfield: более 1000 сайтов</translation>
    </message>
    <message>
        <source>Opens the Loomfield web site in your browser</source>
        <translation>Открывает сайт Loomfield в браузере</translation>
    </message>
    <message>
        <source>Go To Loomfield&lt;br&gt;Access 1000&apos;s of Sites</source>
        <translation>Перейти на Loomfield&lt;br&gt;Более 1000 сайтов</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Назад</translation>
    </message>
    <message>
        <source>Returns to the start page</source>
        <translation>Возвращает на начальную страницу</translation>
    </message>
    <message>
        <source>Video address</source>
        <translation>Адрес видео</translation>
    </message>
    <message>
        <source>The address of a YouTube video; press Enter to look it up</source>
        <translation>Адрес видео с YouTube; нажмите Enter, чтобы найти его</translation>
    </message>
    <message>
        <source>Process</source>
        <translation>Обработать</translation>
    </message>
    <message>
        <source>Looks up the video and lists its formats</source>
        <translation>Находит видео и показывает его форматы</translation>
    </message>
    <message>
        <source>Stops looking up the video and returns to its address</source>
        <translation>Прекращает поиск видео и возвращает к его адресу</translation>
    </message>
    <message>
        <source>Title of the video</source>
        <translation>Название видео</translation>
    </message>
    <message>
        <source>title</source>
        <translation>название</translation>
    </message>
    <message>
        <source>Duration of the video</source>
        <translation>Длительность видео</translation>
    </message>
    <message>
        <source>00:00:00</source>
        <translation>00:00:00</translation>
    </message>
    <message>
        <source>Looking up the video</source>
        <translation>Поиск видео</translation>
    </message>
    <message>
        <source>Shown until the video&apos;s formats are listed</source>
        <translation>Показывается, пока не появится список форматов видео</translation>
    </message>
    <message>
        <source>Formats</source>
        <translation>Форматы</translation>
    </message>
    <message>
        <source>The video&apos;s formats, largest first: type, resolution and size. Press Enter or click a format to download it</source>
        <translation>Форматы видео, начиная с самого большого: тип, разрешение и размер. Нажмите Enter или щёлкните формат, чтобы скачать его</translation>
    </message>
    <message>
        <source>Returns to the list of formats</source>
        <translation>Возвращает к списку форматов</translation>
    </message>
    <message>
        <source>Downloading: </source>
        <translation>Загрузка: </translation>
    </message>
    <message>
        <source>Video Successfully Downloaded</source>
        <translation>Видео успешно скачано</translation>
    </message>
    <message>
        <source>Download progress</source>
        <translation>Ход загрузки</translation>
    </message>
    <message>
        <source>How much of the video has been downloaded</source>
        <translation>Какая часть видео уже скачана</translation>
    </message>
    <message>
        <source>Starts again with the address of another video</source>
        <translation>Начинает заново с адресом другого видео</translation>
    </message>
    <message>
        <source>Start Over</source>
        <translation>Начать заново</translation>
    </message>
    <message>
        <source>Opens the folder with the downloaded video</source>
        <translation>Открывает папку со скачанным видео</translation>
    </message>
    <message>
        <source>Open Folder with File</source>
        <translation>Открыть папку</translation>
    </message>
    <message>
        <source>Stops the download</source>
        <translation>Останавливает загрузку</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Отмена</translation>
    </message>
    <message>
        <source>Please wait</source>
        <translation>Подождите</translation>
    </message>
    <message>
        <source>Shown while the program is busy</source>
        <translation>Показывается, пока программа занята</translation>
    </message>
    <message>
        <source>| %1 sec.</source>
        <translation>| %1 с</translation>
    </message>
    <message>
        <source>Cannot request metadata</source>
        <translation>Не удалось получить метаданные</translation>
    </message>
    <message>
        <source>crash exit on metadata request</source>
        <translation>аварийное завершение при запросе метаданных</translation>
    </message>
    <message>
        <source>crash exit on formats request</source>
        <translation>аварийное завершение при запросе форматов</translation>
    </message>
    <message>
        <source>crash exit at downloading process</source>
        <translation>аварийное завершение при скачивании</translation>
    </message>
    <message>
        <source>format count error</source>
        <translation>ошибка в числе форматов</translation>
    </message>
    <message>
        <source>cannot start the downloader tool</source>
        <translation>не удаётся запустить загрузчик</translation>
    </message>
    <message>
        <source>indefinite</source>
        <translation>неизвестная ошибка</translation>
    </message>
    <message>
        <source>WARNING</source>
        <translation>ПРЕДУПРЕЖДЕНИЕ</translation>
    </message>
    <message>
        <source>WARNING: You must provide at least some valid YouTube URL to proceed</source>
        <translation>ПРЕДУПРЕЖДЕНИЕ: чтобы продолжить, укажите действительный адрес видео YouTube</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Название</translation>
    </message>
    <message>
        <source>&lt;h3&gt;ERROR:&lt;/h3&gt;%1&lt;hr&gt;&lt;i&gt;Code: #0x%2&lt;/i&gt;</source>
        <extracomment>%1 is the kind of failure, %2 its code in hexadecimal.</extracomment>
        <translation>&lt;h3&gt;ОШИБКА:&lt;/h3&gt;%1&lt;hr&gt;&lt;i&gt;Код: #0x%2&lt;/i&gt;</translation>
    </message>
    <message>
        <source>ERROR</source>
        <translation>ОШИБКА</translation>
    </message>
    <message>
        <source>Unable to update. Please contact support</source>
        <translation>Не удалось обновить. Обратитесь в службу поддержки</translation>
    </message>
    <message>
        <source>Success</source>
        <translation>Обновление завершено</translation>
    </message>
    <message>
        <source>KestrelDownloader was successfully updated</source>
        <translation>KestrelDownloader успешно обновлён</translation>
    </message>
    <message>
        <source>Manually Update Software</source>
        <translation>Обновить программу вручную</translation>
    </message>
    <message>
        <source>Logging enabled</source>
        <translation>Журнал включён</translation>
    </message>
    <message>
        <source>Change Scale Size</source>
        <translation>Изменить масштаб</translation>
    </message>
    <message>
        <source>%1%</source>
        <extracomment>A display scale in percent, as 130%.</extracomment>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>Show UUID</source>
        <translation>Показать UUID</translation>
    </message>
    <message>
        <source>About</source>
        <translation>О программе</translation>
    </message>
    <message>
        <source>%1 version: %2</source>
        <translation>%1, версия %2</translation>
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
        <translation>поле «releaseNumber» отсутствует или не является числом</translation>
    </message>
    <message>
        <source>&quot;releaseNumber&quot; is not a positive whole number</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>поле «releaseNumber» не является целым положительным числом</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is missing or not a text</source>
        <extracomment>%1 is a key of the release feed file, as &quot;version&quot;; it stays as it is.</extracomment>
        <translation>поле «%1» отсутствует или не является текстом</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot;: %2</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;), %2 what is wrong with its entry.</extracomment>
        <translation>установщик для «%1»: %2</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot;: &quot;sha256&quot; is not 64 hexadecimal digits</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;); &quot;sha256&quot; is a key of that file and stays as it is.</extracomment>
        <translation>установщик для «%1»: «sha256» не состоит из 64 шестнадцатеричных цифр</translation>
    </message>
    <message>
        <source>not valid JSON (%1 at offset %2)</source>
        <extracomment>%1 is the JSON reader&apos;s own message, %2 the position in the file where it stopped.</extracomment>
        <translation>недопустимый JSON (%1, позиция %2)</translation>
    </message>
    <message>
        <source>the document is not a JSON object</source>
        <translation>документ не является объектом JSON</translation>
    </message>
    <message>
        <source>&quot;version&quot; is too long</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>поле «version» слишком длинное</translation>
    </message>
    <message>
        <source>&quot;buildDate&quot; is not of the form NN.NNNN</source>
        <extracomment>&quot;buildDate&quot; is a key of the release feed file and stays as it is; NN.NNNN shows the form of its value (two digits, a dot, four digits).</extracomment>
        <translation>поле «buildDate» не имеет вида NN.NNNN</translation>
    </message>
    <message>
        <source>&quot;installers&quot; is missing or not an object</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>поле «installers» отсутствует или не является объектом</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot; is not an object</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;).</extracomment>
        <translation>запись установщика для «%1» не является объектом</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a usable address</source>
        <extracomment>%1 is a web address. Shown inside &quot;The update address %1.&quot; and similar messages.</extracomment>
        <translation>«%1» не является корректным адресом</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was refused: only secure https addresses are accepted</source>
        <extracomment>%1 is a web address. Shown inside &quot;The update address %1.&quot; and similar messages.</extracomment>
        <translation>«%1» отклонён: принимаются только защищённые адреса https</translation>
    </message>
</context>
<context>
    <name>SysInfoPlugin</name>
    <message>
        <source> (build %1)</source>
        <translation> (сборка %1)</translation>
    </message>
    <message>
        <source>Operating system: %1</source>
        <translation>Операционная система: %1</translation>
    </message>
    <message>
        <source>Kernel: %1 %2</source>
        <translation>Ядро: %1 %2</translation>
    </message>
    <message>
        <source>CPU architecture: %1</source>
        <translation>Архитектура процессора: %1</translation>
    </message>
    <message>
        <source>Qt version: %1</source>
        <translation>Версия Qt: %1</translation>
    </message>
</context>
<context>
    <name>UpdaterPlugin</name>
    <message>
        <source>The update address %1.</source>
        <translation>Адрес обновления %1.</translation>
    </message>
    <message>
        <source>The update server redirected to an address that is not allowed: %1.</source>
        <translation>Сервер обновлений перенаправил на недопустимый адрес: %1.</translation>
    </message>
    <message>
        <source>The release information from the update server is too large to be a release feed.</source>
        <translation>Сведения о выпусках с сервера обновлений слишком велики для ленты выпусков.</translation>
    </message>
    <message>
        <source>Could not get the release information: the update server answered HTTP %1 %2.</source>
        <translation>Не удалось получить сведения о выпусках: сервер обновлений ответил HTTP %1 %2.</translation>
    </message>
    <message>
        <source>The update server did not answer within %1 seconds.</source>
        <translation>Сервер обновлений не ответил за %1 с.</translation>
    </message>
    <message>
        <source>Could not reach the update server: %1</source>
        <translation>Не удалось связаться с сервером обновлений: %1</translation>
    </message>
    <message>
        <source>The release information from the update server is not readable: %1.</source>
        <translation>Не удалось прочитать сведения о выпусках с сервера обновлений: %1.</translation>
    </message>
    <message>
        <source>You have the latest version of %1.

The newest release on the update server is %2 (build %3).</source>
        <translation>У вас последняя версия %1.

Новейший выпуск на сервере обновлений — %2 (сборка %3).</translation>
    </message>
    <message>
        <source>Version %1 of %2 is available, but the update server offers no installer for this system.</source>
        <translation>Доступна версия %1 программы %2, но сервер обновлений не предлагает установщик для этой системы.</translation>
    </message>
    <message>
        <source>Version %1 (build %2) of %3 is available.

Do you want to download and install it now?</source>
        <translation>Доступна версия %1 (сборка %2) программы %3.

Скачать и установить её сейчас?</translation>
    </message>
    <message>
        <source>Downloading %1 %2…
%3 of %4</source>
        <translation>Загрузка %1 %2…
%3 из %4</translation>
    </message>
    <message>
        <source>Downloading %1 %2…
%3</source>
        <translation>Загрузка %1 %2…
%3</translation>
    </message>
    <message>
        <source>Version %1 of %2 is being installed.

Please restart %2 once its installer has finished.</source>
        <translation>Устанавливается версия %1 программы %2.

Перезапустите %2, когда установщик завершит работу.</translation>
    </message>
    <message>
        <source>Software Update</source>
        <translation>Обновление программы</translation>
    </message>
    <message>
        <source>Downloading %1 %2…</source>
        <translation>Загрузка %1 %2…</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Отмена</translation>
    </message>
    <message>
        <source>The signature of the release information is too large to be a signature.</source>
        <translation>Подпись сведений о выпусках слишком велика для подписи.</translation>
    </message>
    <message>
        <source>The release information from the update server was refused: it is not signed (its signature %1 could not be fetched: HTTP %2 %3).</source>
        <translation>Сведения о выпусках с сервера обновлений отклонены: они не подписаны (не удалось получить их подпись %1: HTTP %2 %3).</translation>
    </message>
    <message>
        <source>The release information from the update server was refused: %1.</source>
        <translation>Сведения о выпусках с сервера обновлений отклонены: %1.</translation>
    </message>
    <message>
        <source>The installer cannot be downloaded: %1.</source>
        <translation>Невозможно скачать установщик: %1.</translation>
    </message>
    <message>
        <source>The downloaded installer could not be read again before its start and was deleted.</source>
        <translation>Не удалось повторно прочитать скачанный установщик перед запуском, поэтому он удалён.</translation>
    </message>
    <message>
        <source>The downloaded installer was changed after its check and was deleted; it was not started.</source>
        <translation>Скачанный установщик изменился после проверки, поэтому он удалён и не запущен.</translation>
    </message>
    <message>
        <source>The installer was not started: %1.</source>
        <translation>Установщик не запущен: %1.</translation>
    </message>
    <message>
        <source>The installer &quot;%1&quot; could not be started and was deleted.</source>
        <translation>Не удалось запустить установщик «%1», поэтому он удалён.</translation>
    </message>
</context>
</TS>
