<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es">
<context>
    <name>AboutDialog</name>
    <message>
        <source>Version %1</source>
        <translation>Versión %1</translation>
    </message>
    <message>
        <source>System information</source>
        <translation>Información del sistema</translation>
    </message>
</context>
<context>
    <name>FeedSignature</name>
    <message>
        <source>Could not create a temporary folder for the signature check: %1</source>
        <translation>No se pudo crear una carpeta temporal para comprobar la firma: %1</translation>
    </message>
    <message>
        <source>it is signed by another key than the application&apos;s release key</source>
        <translation>está firmada con una clave distinta de la clave de publicación de la aplicación</translation>
    </message>
    <message>
        <source>its signature does not match its content</source>
        <translation>su firma no coincide con su contenido</translation>
    </message>
    <message>
        <source>its signature is not a valid signature</source>
        <translation>su firma no es una firma válida</translation>
    </message>
    <message>
        <source>Could not write &quot;%1&quot; for the signature check: %2</source>
        <translation>No se pudo escribir «%1» para comprobar la firma: %2</translation>
    </message>
    <message>
        <source>gpgv (%1) could not be started</source>
        <translation>no se pudo iniciar gpgv (%1)</translation>
    </message>
    <message>
        <source>gpgv did not answer within %1 seconds</source>
        <translation>gpgv no respondió en %1 segundos</translation>
    </message>
</context>
<context>
    <name>FormatTableModel</name>
    <message>
        <source>Type</source>
        <translation>Tipo</translation>
    </message>
    <message>
        <source>ID.</source>
        <translation>ID</translation>
    </message>
    <message>
        <source>Resolution</source>
        <translation>Resolución</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Tamaño</translation>
    </message>
</context>
<context>
    <name>IdentifierDialog</name>
    <message>
        <source>Machine identifier</source>
        <translation>Identificador del equipo</translation>
    </message>
    <message>
        <source>The identifier of this computer:</source>
        <translation>El identificador de este equipo:</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copiar</translation>
    </message>
    <message>
        <source>Copied to the clipboard.</source>
        <translation>Copiado al portapapeles.</translation>
    </message>
</context>
<context>
    <name>Identity</name>
    <message>
        <source>simple downloader from YouTube, full version is on Loomfield site</source>
        <translation>descargador sencillo de YouTube; la versión completa está en el sitio de Loomfield</translation>
    </message>
</context>
<context>
    <name>InstallerDownload</name>
    <message>
        <source>Could not save the installer as &quot;%1&quot;: %2</source>
        <translation>No se pudo guardar el instalador como «%1»: %2</translation>
    </message>
    <message>
        <source>The installer download was redirected to an address that is not allowed: %1.</source>
        <translation>La descarga del instalador se redirigió a una dirección no permitida: %1.</translation>
    </message>
    <message>
        <source>The installer could not be downloaded: the server answered HTTP %1 %2.</source>
        <translation>No se pudo descargar el instalador: el servidor respondió HTTP %1 %2.</translation>
    </message>
    <message>
        <source>The installer download stalled: nothing arrived for %1 seconds.</source>
        <translation>La descarga del instalador se ha detenido: no ha llegado nada en %1 segundos.</translation>
    </message>
    <message>
        <source>Could not reach the update server: %1</source>
        <translation>No se pudo conectar con el servidor de actualizaciones: %1</translation>
    </message>
    <message>
        <source>The downloaded installer is damaged (checksum mismatch) and was deleted.</source>
        <translation>El instalador descargado está dañado (la suma de comprobación no coincide) y se ha eliminado.</translation>
    </message>
    <message>
        <source>Could not replace the earlier file &quot;%1&quot;.</source>
        <translation>No se pudo reemplazar el archivo anterior «%1».</translation>
    </message>
    <message>
        <source>Could not rename the installer to &quot;%1&quot;: %2</source>
        <translation>No se pudo cambiar el nombre del instalador a «%1»: %2</translation>
    </message>
    <message>
        <source>The installer was refused: it is larger than %1, more than an installer may be.</source>
        <translation>Se rechazó el instalador: ocupa más de %1, el tamaño máximo de un instalador.</translation>
    </message>
</context>
<context>
    <name>InstallerFolder</name>
    <message>
        <source>there is no folder for the installer on this system</source>
        <translation>este sistema no tiene una carpeta para el instalador</translation>
    </message>
    <message>
        <source>the folder &quot;%1&quot; could not be made ready for the installer</source>
        <extracomment>%1 is the folder&apos;s path.</extracomment>
        <translation>no se pudo preparar la carpeta «%1» para el instalador</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not lie in the installer&apos;s own folder</source>
        <extracomment>%1 is the installer&apos;s path. Shown inside &quot;The installer was not started: %1.&quot;</extracomment>
        <translation>«%1» no está en la carpeta propia del instalador</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a program (.exe)</source>
        <extracomment>%1 is the installer&apos;s path. Shown inside &quot;The installer was not started: %1.&quot;</extracomment>
        <translation>«%1» no es un programa (.exe)</translation>
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
        <translation>Descargar un vídeo</translation>
    </message>
    <message>
        <source>Opens the page where you paste the address of a YouTube video</source>
        <translation>Abre la página donde se pega la dirección de un vídeo de YouTube</translation>
    </message>
    <message>
        <source>Go To Loomfield: Access 1000&apos;s of Sites</source>
        <translation>Ir a Loomfield: acceso a más de 1000 sitios</translation>
    </message>
    <message>
        <source>Opens the Loomfield web site in your browser</source>
        <translation>Abre el sitio web de Loomfield en el navegador</translation>
    </message>
    <message>
        <source>Go To Loomfield&lt;br&gt;Access 1000&apos;s of Sites</source>
        <translation>Ir a Loomfield&lt;br&gt;Acceso a más de 1000 sitios</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Atrás</translation>
    </message>
    <message>
        <source>Returns to the start page</source>
        <translation>Vuelve a la página de inicio</translation>
    </message>
    <message>
        <source>Video address</source>
        <translation>Dirección del vídeo</translation>
    </message>
    <message>
        <source>The address of a YouTube video; press Enter to look it up</source>
        <translation>La dirección de un vídeo de YouTube; pulse Intro para buscarlo</translation>
    </message>
    <message>
        <source>Process</source>
        <translation>Procesar</translation>
    </message>
    <message>
        <source>Looks up the video and lists its formats</source>
        <translation>Busca el vídeo y muestra sus formatos</translation>
    </message>
    <message>
        <source>Stops looking up the video and returns to its address</source>
        <translation>Deja de buscar el vídeo y vuelve a su dirección</translation>
    </message>
    <message>
        <source>Title of the video</source>
        <translation>Título del vídeo</translation>
    </message>
    <message>
        <source>title</source>
        <translation>título</translation>
    </message>
    <message>
        <source>Duration of the video</source>
        <translation>Duración del vídeo</translation>
    </message>
    <message>
        <source>00:00:00</source>
        <translation>00:00:00</translation>
    </message>
    <message>
        <source>Looking up the video</source>
        <translation>Buscando el vídeo</translation>
    </message>
    <message>
        <source>Shown until the video&apos;s formats are listed</source>
        <translation>Se muestra hasta que aparecen los formatos del vídeo</translation>
    </message>
    <message>
        <source>Formats</source>
        <translation>Formatos</translation>
    </message>
    <message>
        <source>The video&apos;s formats, largest first: type, resolution and size. Press Enter or click a format to download it</source>
        <translation>Los formatos del vídeo, del más grande al más pequeño: tipo, resolución y tamaño. Pulse Intro o haga clic en un formato para descargarlo</translation>
    </message>
    <message>
        <source>Returns to the list of formats</source>
        <translation>Vuelve a la lista de formatos</translation>
    </message>
    <message>
        <source>Downloading: </source>
        <translation>Descargando: </translation>
    </message>
    <message>
        <source>Video Successfully Downloaded</source>
        <translation>Vídeo descargado correctamente</translation>
    </message>
    <message>
        <source>Download progress</source>
        <translation>Progreso de la descarga</translation>
    </message>
    <message>
        <source>How much of the video has been downloaded</source>
        <translation>Cuánto se ha descargado del vídeo</translation>
    </message>
    <message>
        <source>Starts again with the address of another video</source>
        <translation>Empieza de nuevo con la dirección de otro vídeo</translation>
    </message>
    <message>
        <source>Start Over</source>
        <translation>Empezar de nuevo</translation>
    </message>
    <message>
        <source>Opens the folder with the downloaded video</source>
        <translation>Abre la carpeta con el vídeo descargado</translation>
    </message>
    <message>
        <source>Open Folder with File</source>
        <translation>Abrir carpeta</translation>
    </message>
    <message>
        <source>Stops the download</source>
        <translation>Detiene la descarga</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Please wait</source>
        <translation>Espere, por favor</translation>
    </message>
    <message>
        <source>Shown while the program is busy</source>
        <translation>Se muestra mientras el programa está ocupado</translation>
    </message>
    <message>
        <source>| %1 sec.</source>
        <translation>| %1 s</translation>
    </message>
    <message>
        <source>Cannot request metadata</source>
        <translation>No se pueden obtener los metadatos</translation>
    </message>
    <message>
        <source>crash exit on metadata request</source>
        <translation>fallo al solicitar los metadatos</translation>
    </message>
    <message>
        <source>crash exit on formats request</source>
        <translation>fallo al solicitar los formatos</translation>
    </message>
    <message>
        <source>crash exit at downloading process</source>
        <translation>fallo durante la descarga</translation>
    </message>
    <message>
        <source>format count error</source>
        <translation>error en el número de formatos</translation>
    </message>
    <message>
        <source>cannot start the downloader tool</source>
        <translation>no se puede iniciar la herramienta de descarga</translation>
    </message>
    <message>
        <source>indefinite</source>
        <translation>error desconocido</translation>
    </message>
    <message>
        <source>WARNING</source>
        <translation>ADVERTENCIA</translation>
    </message>
    <message>
        <source>WARNING: You must provide at least some valid YouTube URL to proceed</source>
        <translation>ADVERTENCIA: debe indicar una dirección de YouTube válida para continuar</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Título</translation>
    </message>
    <message>
        <source>&lt;h3&gt;ERROR:&lt;/h3&gt;%1&lt;hr&gt;&lt;i&gt;Code: #0x%2&lt;/i&gt;</source>
        <extracomment>%1 is the kind of failure, %2 its code in hexadecimal.</extracomment>
        <translation>&lt;h3&gt;ERROR:&lt;/h3&gt;%1&lt;hr&gt;&lt;i&gt;Código: #0x%2&lt;/i&gt;</translation>
    </message>
    <message>
        <source>ERROR</source>
        <translation>ERROR</translation>
    </message>
    <message>
        <source>Unable to update. Please contact support</source>
        <translation>No se pudo actualizar. Póngase en contacto con el soporte técnico</translation>
    </message>
    <message>
        <source>Success</source>
        <translation>Actualización completada</translation>
    </message>
    <message>
        <source>KestrelDownloader was successfully updated</source>
        <translation>KestrelDownloader se ha actualizado correctamente</translation>
    </message>
    <message>
        <source>Manually Update Software</source>
        <translation>Actualizar el programa manualmente</translation>
    </message>
    <message>
        <source>Logging enabled</source>
        <translation>Registro activado</translation>
    </message>
    <message>
        <source>Change Scale Size</source>
        <translation>Cambiar escala</translation>
    </message>
    <message>
        <source>%1%</source>
        <extracomment>A display scale in percent, as 130%.</extracomment>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>Show UUID</source>
        <translation>Mostrar UUID</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Acerca de</translation>
    </message>
    <message>
        <source>%1 version: %2</source>
        <translation>%1, versión %2</translation>
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
        <translation>«releaseNumber» falta o no es un número</translation>
    </message>
    <message>
        <source>&quot;releaseNumber&quot; is not a positive whole number</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>«releaseNumber» no es un número entero positivo</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is missing or not a text</source>
        <extracomment>%1 is a key of the release feed file, as &quot;version&quot;; it stays as it is.</extracomment>
        <translation>«%1» falta o no es un texto</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot;: %2</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;), %2 what is wrong with its entry.</extracomment>
        <translation>instalador para «%1»: %2</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot;: &quot;sha256&quot; is not 64 hexadecimal digits</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;); &quot;sha256&quot; is a key of that file and stays as it is.</extracomment>
        <translation>instalador para «%1»: «sha256» no tiene 64 dígitos hexadecimales</translation>
    </message>
    <message>
        <source>not valid JSON (%1 at offset %2)</source>
        <extracomment>%1 is the JSON reader&apos;s own message, %2 the position in the file where it stopped.</extracomment>
        <translation>JSON no válido (%1 en la posición %2)</translation>
    </message>
    <message>
        <source>the document is not a JSON object</source>
        <translation>el documento no es un objeto JSON</translation>
    </message>
    <message>
        <source>&quot;version&quot; is too long</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>«version» es demasiado largo</translation>
    </message>
    <message>
        <source>&quot;buildDate&quot; is not of the form NN.NNNN</source>
        <extracomment>&quot;buildDate&quot; is a key of the release feed file and stays as it is; NN.NNNN shows the form of its value (two digits, a dot, four digits).</extracomment>
        <translation>«buildDate» no tiene el formato NN.NNNN</translation>
    </message>
    <message>
        <source>&quot;installers&quot; is missing or not an object</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>«installers» falta o no es un objeto</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot; is not an object</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;).</extracomment>
        <translation>la entrada del instalador para «%1» no es un objeto</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a usable address</source>
        <extracomment>%1 is a web address. Shown inside &quot;The update address %1.&quot; and similar messages.</extracomment>
        <translation>«%1» no es una dirección utilizable</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was refused: only secure https addresses are accepted</source>
        <extracomment>%1 is a web address. Shown inside &quot;The update address %1.&quot; and similar messages.</extracomment>
        <translation>«%1» se rechazó: solo se aceptan direcciones https seguras</translation>
    </message>
</context>
<context>
    <name>SysInfoPlugin</name>
    <message>
        <source> (build %1)</source>
        <translation> (compilación %1)</translation>
    </message>
    <message>
        <source>Operating system: %1</source>
        <translation>Sistema operativo: %1</translation>
    </message>
    <message>
        <source>Kernel: %1 %2</source>
        <translation>Núcleo: %1 %2</translation>
    </message>
    <message>
        <source>CPU architecture: %1</source>
        <translation>Arquitectura de la CPU: %1</translation>
    </message>
    <message>
        <source>Qt version: %1</source>
        <translation>Versión de Qt: %1</translation>
    </message>
</context>
<context>
    <name>UpdaterPlugin</name>
    <message>
        <source>The update address %1.</source>
        <translation>La dirección de actualización %1.</translation>
    </message>
    <message>
        <source>The update server redirected to an address that is not allowed: %1.</source>
        <translation>El servidor de actualizaciones redirigió a una dirección no permitida: %1.</translation>
    </message>
    <message>
        <source>The release information from the update server is too large to be a release feed.</source>
        <translation>La información de versiones del servidor de actualizaciones es demasiado grande para ser un canal de versiones.</translation>
    </message>
    <message>
        <source>Could not get the release information: the update server answered HTTP %1 %2.</source>
        <translation>No se pudo obtener la información de versiones: el servidor de actualizaciones respondió HTTP %1 %2.</translation>
    </message>
    <message>
        <source>The update server did not answer within %1 seconds.</source>
        <translation>El servidor de actualizaciones no respondió en %1 segundos.</translation>
    </message>
    <message>
        <source>Could not reach the update server: %1</source>
        <translation>No se pudo conectar con el servidor de actualizaciones: %1</translation>
    </message>
    <message>
        <source>The release information from the update server is not readable: %1.</source>
        <translation>No se puede leer la información de versiones del servidor de actualizaciones: %1.</translation>
    </message>
    <message>
        <source>You have the latest version of %1.

The newest release on the update server is %2 (build %3).</source>
        <translation>Ya tiene la última versión de %1.

La versión más reciente en el servidor de actualizaciones es la %2 (compilación %3).</translation>
    </message>
    <message>
        <source>Version %1 of %2 is available, but the update server offers no installer for this system.</source>
        <translation>La versión %1 de %2 está disponible, pero el servidor de actualizaciones no ofrece un instalador para este sistema.</translation>
    </message>
    <message>
        <source>Version %1 (build %2) of %3 is available.

Do you want to download and install it now?</source>
        <translation>La versión %1 (compilación %2) de %3 está disponible.

¿Desea descargarla e instalarla ahora?</translation>
    </message>
    <message>
        <source>Downloading %1 %2…
%3 of %4</source>
        <translation>Descargando %1 %2…
%3 de %4</translation>
    </message>
    <message>
        <source>Downloading %1 %2…
%3</source>
        <translation>Descargando %1 %2…
%3</translation>
    </message>
    <message>
        <source>Version %1 of %2 is being installed.

Please restart %2 once its installer has finished.</source>
        <translation>Se está instalando la versión %1 de %2.

Reinicie %2 cuando termine el instalador.</translation>
    </message>
    <message>
        <source>Software Update</source>
        <translation>Actualización de software</translation>
    </message>
    <message>
        <source>Downloading %1 %2…</source>
        <translation>Descargando %1 %2…</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>The signature of the release information is too large to be a signature.</source>
        <translation>La firma de la información de versiones es demasiado grande para ser una firma.</translation>
    </message>
    <message>
        <source>The release information from the update server was refused: it is not signed (its signature %1 could not be fetched: HTTP %2 %3).</source>
        <translation>Se rechazó la información de versiones del servidor de actualizaciones: no está firmada (no se pudo obtener su firma %1: HTTP %2 %3).</translation>
    </message>
    <message>
        <source>The release information from the update server was refused: %1.</source>
        <translation>Se rechazó la información de versiones del servidor de actualizaciones: %1.</translation>
    </message>
    <message>
        <source>The installer cannot be downloaded: %1.</source>
        <translation>No se puede descargar el instalador: %1.</translation>
    </message>
    <message>
        <source>The downloaded installer could not be read again before its start and was deleted.</source>
        <translation>No se pudo volver a leer el instalador descargado antes de iniciarlo y se ha eliminado.</translation>
    </message>
    <message>
        <source>The downloaded installer was changed after its check and was deleted; it was not started.</source>
        <translation>El instalador descargado se modificó después de comprobarlo y se ha eliminado; no se ha iniciado.</translation>
    </message>
    <message>
        <source>The installer was not started: %1.</source>
        <translation>No se inició el instalador: %1.</translation>
    </message>
    <message>
        <source>The installer &quot;%1&quot; could not be started and was deleted.</source>
        <translation>No se pudo iniciar el instalador «%1» y se ha eliminado.</translation>
    </message>
</context>
</TS>
