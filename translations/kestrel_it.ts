<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="it">
<context>
    <name>AboutDialog</name>
    <message>
        <source>Version %1</source>
        <translation>Versione %1</translation>
    </message>
    <message>
        <source>System information</source>
        <translation>Informazioni di sistema</translation>
    </message>
</context>
<context>
    <name>FeedSignature</name>
    <message>
        <source>Could not create a temporary folder for the signature check: %1</source>
        <translation>Impossibile creare una cartella temporanea per la verifica della firma: %1</translation>
    </message>
    <message>
        <source>it is signed by another key than the application&apos;s release key</source>
        <translation>sono firmate con una chiave diversa dalla chiave di rilascio dell&apos;applicazione</translation>
    </message>
    <message>
        <source>its signature does not match its content</source>
        <translation>la firma non corrisponde al contenuto</translation>
    </message>
    <message>
        <source>its signature is not a valid signature</source>
        <translation>la firma non è una firma valida</translation>
    </message>
    <message>
        <source>Could not write &quot;%1&quot; for the signature check: %2</source>
        <translation>Impossibile scrivere «%1» per la verifica della firma: %2</translation>
    </message>
    <message>
        <source>gpgv (%1) could not be started</source>
        <translation>impossibile avviare gpgv (%1)</translation>
    </message>
    <message>
        <source>gpgv did not answer within %1 seconds</source>
        <translation>gpgv non ha risposto entro %1 secondi</translation>
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
        <translation>Risoluzione</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Dimensione</translation>
    </message>
</context>
<context>
    <name>IdentifierDialog</name>
    <message>
        <source>Machine identifier</source>
        <translation>Identificativo della macchina</translation>
    </message>
    <message>
        <source>The identifier of this computer:</source>
        <translation>L&apos;identificativo di questo computer:</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copia</translation>
    </message>
    <message>
        <source>Copied to the clipboard.</source>
        <translation>Copiato negli appunti.</translation>
    </message>
</context>
<context>
    <name>Identity</name>
    <message>
        <source>simple downloader from YouTube, full version is on Loomfield site</source>
        <translation>semplice downloader per YouTube, la versione completa è sul sito Loomfield</translation>
    </message>
</context>
<context>
    <name>InstallerDownload</name>
    <message>
        <source>Could not save the installer as &quot;%1&quot;: %2</source>
        <translation>Impossibile salvare il programma di installazione come «%1»: %2</translation>
    </message>
    <message>
        <source>The installer download was redirected to an address that is not allowed: %1.</source>
        <translation>Il download del programma di installazione è stato reindirizzato a un indirizzo non consentito: %1.</translation>
    </message>
    <message>
        <source>The installer could not be downloaded: the server answered HTTP %1 %2.</source>
        <translation>Impossibile scaricare il programma di installazione: il server ha risposto HTTP %1 %2.</translation>
    </message>
    <message>
        <source>The installer download stalled: nothing arrived for %1 seconds.</source>
        <translation>Il download del programma di installazione si è bloccato: non arriva nulla da %1 secondi.</translation>
    </message>
    <message>
        <source>Could not reach the update server: %1</source>
        <translation>Impossibile raggiungere il server degli aggiornamenti: %1</translation>
    </message>
    <message>
        <source>The downloaded installer is damaged (checksum mismatch) and was deleted.</source>
        <translation>Il programma di installazione scaricato è danneggiato (checksum non corrispondente) ed è stato eliminato.</translation>
    </message>
    <message>
        <source>Could not replace the earlier file &quot;%1&quot;.</source>
        <translation>Impossibile sostituire il file precedente «%1».</translation>
    </message>
    <message>
        <source>Could not rename the installer to &quot;%1&quot;: %2</source>
        <translation>Impossibile rinominare il programma di installazione in «%1»: %2</translation>
    </message>
    <message>
        <source>The installer was refused: it is larger than %1, more than an installer may be.</source>
        <translation>Il programma di installazione è stato rifiutato: supera %1, la dimensione massima consentita per un programma di installazione.</translation>
    </message>
</context>
<context>
    <name>InstallerFolder</name>
    <message>
        <source>there is no folder for the installer on this system</source>
        <translation>su questo sistema non c&apos;è una cartella per il programma di installazione</translation>
    </message>
    <message>
        <source>the folder &quot;%1&quot; could not be made ready for the installer</source>
        <extracomment>%1 is the folder&apos;s path.</extracomment>
        <translation>impossibile preparare la cartella «%1» per il programma di installazione</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not lie in the installer&apos;s own folder</source>
        <extracomment>%1 is the installer&apos;s path. Shown inside &quot;The installer was not started: %1.&quot;</extracomment>
        <translation>«%1» non si trova nella cartella riservata al programma di installazione</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a program (.exe)</source>
        <extracomment>%1 is the installer&apos;s path. Shown inside &quot;The installer was not started: %1.&quot;</extracomment>
        <translation>«%1» non è un programma (.exe)</translation>
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
        <translation>Scarica un video</translation>
    </message>
    <message>
        <source>Opens the page where you paste the address of a YouTube video</source>
        <translation>Apre la pagina in cui incollare l&apos;indirizzo di un video di YouTube</translation>
    </message>
    <message>
        <source>Go To Loomfield: Access 1000&apos;s of Sites</source>
        <translation>Vai a Loomfield: accesso a oltre 1000 siti</translation>
    </message>
    <message>
        <source>Opens the Loomfield web site in your browser</source>
        <translation>Apre il sito web di Loomfield nel browser</translation>
    </message>
    <message>
        <source>Go To Loomfield&lt;br&gt;Access 1000&apos;s of Sites</source>
        <translation>Vai a Loomfield&lt;br&gt;Accesso a oltre 1000 siti</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Indietro</translation>
    </message>
    <message>
        <source>Returns to the start page</source>
        <translation>Torna alla pagina iniziale</translation>
    </message>
    <message>
        <source>Video address</source>
        <translation>Indirizzo del video</translation>
    </message>
    <message>
        <source>The address of a YouTube video; press Enter to look it up</source>
        <translation>L&apos;indirizzo di un video di YouTube; premi Invio per cercarlo</translation>
    </message>
    <message>
        <source>Process</source>
        <translation>Elabora</translation>
    </message>
    <message>
        <source>Looks up the video and lists its formats</source>
        <translation>Cerca il video ed elenca i suoi formati</translation>
    </message>
    <message>
        <source>Stops looking up the video and returns to its address</source>
        <translation>Interrompe la ricerca del video e torna al suo indirizzo</translation>
    </message>
    <message>
        <source>Title of the video</source>
        <translation>Titolo del video</translation>
    </message>
    <message>
        <source>title</source>
        <translation>titolo</translation>
    </message>
    <message>
        <source>Duration of the video</source>
        <translation>Durata del video</translation>
    </message>
    <message>
        <source>00:00:00</source>
        <translation>00:00:00</translation>
    </message>
    <message>
        <source>Looking up the video</source>
        <translation>Ricerca del video in corso</translation>
    </message>
    <message>
        <source>Shown until the video&apos;s formats are listed</source>
        <translation>Visibile finché non vengono elencati i formati del video</translation>
    </message>
    <message>
        <source>Formats</source>
        <translation>Formati</translation>
    </message>
    <message>
        <source>The video&apos;s formats, largest first: type, resolution and size. Press Enter or click a format to download it</source>
        <translation>I formati del video, dal più grande al più piccolo: tipo, risoluzione e dimensione. Premi Invio o fai clic su un formato per scaricarlo</translation>
    </message>
    <message>
        <source>Returns to the list of formats</source>
        <translation>Torna all&apos;elenco dei formati</translation>
    </message>
    <message>
        <source>Downloading: </source>
        <translation>Download: </translation>
    </message>
    <message>
        <source>Video Successfully Downloaded</source>
        <translation>Video scaricato correttamente</translation>
    </message>
    <message>
        <source>Download progress</source>
        <translation>Avanzamento del download</translation>
    </message>
    <message>
        <source>How much of the video has been downloaded</source>
        <translation>Quanta parte del video è stata scaricata</translation>
    </message>
    <message>
        <source>Starts again with the address of another video</source>
        <translation>Ricomincia con l&apos;indirizzo di un altro video</translation>
    </message>
    <message>
        <source>Start Over</source>
        <translation>Ricomincia</translation>
    </message>
    <message>
        <source>Opens the folder with the downloaded video</source>
        <translation>Apre la cartella con il video scaricato</translation>
    </message>
    <message>
        <source>Open Folder with File</source>
        <translation>Apri cartella del file</translation>
    </message>
    <message>
        <source>Stops the download</source>
        <translation>Interrompe il download</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annulla</translation>
    </message>
    <message>
        <source>Please wait</source>
        <translation>Attendere prego</translation>
    </message>
    <message>
        <source>Shown while the program is busy</source>
        <translation>Visibile mentre il programma è occupato</translation>
    </message>
    <message>
        <source>| %1 sec.</source>
        <translation>| %1 s</translation>
    </message>
    <message>
        <source>Cannot request metadata</source>
        <translation>Impossibile ottenere i metadati</translation>
    </message>
    <message>
        <source>crash exit on metadata request</source>
        <translation>arresto anomalo durante la richiesta dei metadati</translation>
    </message>
    <message>
        <source>crash exit on formats request</source>
        <translation>arresto anomalo durante la richiesta dei formati</translation>
    </message>
    <message>
        <source>crash exit at downloading process</source>
        <translation>arresto anomalo durante il download</translation>
    </message>
    <message>
        <source>format count error</source>
        <translation>errore nel numero di formati</translation>
    </message>
    <message>
        <source>cannot start the downloader tool</source>
        <translation>impossibile avviare lo strumento di download</translation>
    </message>
    <message>
        <source>indefinite</source>
        <translation>errore sconosciuto</translation>
    </message>
    <message>
        <source>WARNING</source>
        <translation>ATTENZIONE</translation>
    </message>
    <message>
        <source>WARNING: You must provide at least some valid YouTube URL to proceed</source>
        <translation>ATTENZIONE: per continuare devi inserire un indirizzo YouTube valido</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titolo</translation>
    </message>
    <message>
        <source>&lt;h3&gt;ERROR:&lt;/h3&gt;%1&lt;hr&gt;&lt;i&gt;Code: #0x%2&lt;/i&gt;</source>
        <extracomment>%1 is the kind of failure, %2 its code in hexadecimal.</extracomment>
        <translation>&lt;h3&gt;ERRORE:&lt;/h3&gt;%1&lt;hr&gt;&lt;i&gt;Codice: #0x%2&lt;/i&gt;</translation>
    </message>
    <message>
        <source>ERROR</source>
        <translation>ERRORE</translation>
    </message>
    <message>
        <source>Unable to update. Please contact support</source>
        <translation>Impossibile aggiornare. Contatta l&apos;assistenza</translation>
    </message>
    <message>
        <source>Success</source>
        <translation>Aggiornamento completato</translation>
    </message>
    <message>
        <source>KestrelDownloader was successfully updated</source>
        <translation>KestrelDownloader è stato aggiornato correttamente</translation>
    </message>
    <message>
        <source>Manually Update Software</source>
        <translation>Aggiorna il programma manualmente</translation>
    </message>
    <message>
        <source>Logging enabled</source>
        <translation>Registrazione attiva</translation>
    </message>
    <message>
        <source>Change Scale Size</source>
        <translation>Cambia scala</translation>
    </message>
    <message>
        <source>%1%</source>
        <extracomment>A display scale in percent, as 130%.</extracomment>
        <translation>%1%</translation>
    </message>
    <message>
        <source>Show UUID</source>
        <translation>Mostra UUID</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Informazioni</translation>
    </message>
    <message>
        <source>%1 version: %2</source>
        <translation>%1, versione %2</translation>
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
        <translation>«releaseNumber» manca o non è un numero</translation>
    </message>
    <message>
        <source>&quot;releaseNumber&quot; is not a positive whole number</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>«releaseNumber» non è un numero intero positivo</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is missing or not a text</source>
        <extracomment>%1 is a key of the release feed file, as &quot;version&quot;; it stays as it is.</extracomment>
        <translation>«%1» manca o non è un testo</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot;: %2</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;), %2 what is wrong with its entry.</extracomment>
        <translation>programma di installazione per «%1»: %2</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot;: &quot;sha256&quot; is not 64 hexadecimal digits</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;); &quot;sha256&quot; is a key of that file and stays as it is.</extracomment>
        <translation>programma di installazione per «%1»: «sha256» non è composto da 64 cifre esadecimali</translation>
    </message>
    <message>
        <source>not valid JSON (%1 at offset %2)</source>
        <extracomment>%1 is the JSON reader&apos;s own message, %2 the position in the file where it stopped.</extracomment>
        <translation>JSON non valido (%1 alla posizione %2)</translation>
    </message>
    <message>
        <source>the document is not a JSON object</source>
        <translation>il documento non è un oggetto JSON</translation>
    </message>
    <message>
        <source>&quot;version&quot; is too long</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>«version» è troppo lungo</translation>
    </message>
    <message>
        <source>&quot;buildDate&quot; is not of the form NN.NNNN</source>
        <extracomment>&quot;buildDate&quot; is a key of the release feed file and stays as it is; NN.NNNN shows the form of its value (two digits, a dot, four digits).</extracomment>
        <translation>«buildDate» non è nel formato NN.NNNN</translation>
    </message>
    <message>
        <source>&quot;installers&quot; is missing or not an object</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>«installers» manca o non è un oggetto</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot; is not an object</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;).</extracomment>
        <translation>la voce del programma di installazione per «%1» non è un oggetto</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a usable address</source>
        <extracomment>%1 is a web address. Shown inside &quot;The update address %1.&quot; and similar messages.</extracomment>
        <translation>«%1» non è un indirizzo utilizzabile</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was refused: only secure https addresses are accepted</source>
        <extracomment>%1 is a web address. Shown inside &quot;The update address %1.&quot; and similar messages.</extracomment>
        <translation>«%1» è stato rifiutato: sono accettati solo indirizzi https sicuri</translation>
    </message>
</context>
<context>
    <name>SysInfoPlugin</name>
    <message>
        <source> (build %1)</source>
        <translation> (build %1)</translation>
    </message>
    <message>
        <source>Operating system: %1</source>
        <translation>Sistema operativo: %1</translation>
    </message>
    <message>
        <source>Kernel: %1 %2</source>
        <translation>Kernel: %1 %2</translation>
    </message>
    <message>
        <source>CPU architecture: %1</source>
        <translation>Architettura della CPU: %1</translation>
    </message>
    <message>
        <source>Qt version: %1</source>
        <translation>Versione di Qt: %1</translation>
    </message>
</context>
<context>
    <name>UpdaterPlugin</name>
    <message>
        <source>The update address %1.</source>
        <translation>L&apos;indirizzo di aggiornamento %1.</translation>
    </message>
    <message>
        <source>The update server redirected to an address that is not allowed: %1.</source>
        <translation>Il server degli aggiornamenti ha reindirizzato a un indirizzo non consentito: %1.</translation>
    </message>
    <message>
        <source>The release information from the update server is too large to be a release feed.</source>
        <translation>Le informazioni sulle versioni inviate dal server degli aggiornamenti sono troppo grandi per un feed di versioni.</translation>
    </message>
    <message>
        <source>Could not get the release information: the update server answered HTTP %1 %2.</source>
        <translation>Impossibile ottenere le informazioni sulle versioni: il server degli aggiornamenti ha risposto HTTP %1 %2.</translation>
    </message>
    <message>
        <source>The update server did not answer within %1 seconds.</source>
        <translation>Il server degli aggiornamenti non ha risposto entro %1 secondi.</translation>
    </message>
    <message>
        <source>Could not reach the update server: %1</source>
        <translation>Impossibile raggiungere il server degli aggiornamenti: %1</translation>
    </message>
    <message>
        <source>The release information from the update server is not readable: %1.</source>
        <translation>Le informazioni sulle versioni inviate dal server degli aggiornamenti non sono leggibili: %1.</translation>
    </message>
    <message>
        <source>You have the latest version of %1.

The newest release on the update server is %2 (build %3).</source>
        <translation>Hai già l&apos;ultima versione di %1.

La versione più recente sul server degli aggiornamenti è %2 (build %3).</translation>
    </message>
    <message>
        <source>Version %1 of %2 is available, but the update server offers no installer for this system.</source>
        <translation>È disponibile la versione %1 di %2, ma il server degli aggiornamenti non offre un programma di installazione per questo sistema.</translation>
    </message>
    <message>
        <source>Version %1 (build %2) of %3 is available.

Do you want to download and install it now?</source>
        <translation>È disponibile la versione %1 (build %2) di %3.

Vuoi scaricarla e installarla ora?</translation>
    </message>
    <message>
        <source>Downloading %1 %2…
%3 of %4</source>
        <translation>Download di %1 %2…
%3 di %4</translation>
    </message>
    <message>
        <source>Downloading %1 %2…
%3</source>
        <translation>Download di %1 %2…
%3</translation>
    </message>
    <message>
        <source>Version %1 of %2 is being installed.

Please restart %2 once its installer has finished.</source>
        <translation>È in corso l&apos;installazione della versione %1 di %2.

Riavvia %2 al termine dell&apos;installazione.</translation>
    </message>
    <message>
        <source>Software Update</source>
        <translation>Aggiornamento software</translation>
    </message>
    <message>
        <source>Downloading %1 %2…</source>
        <translation>Download di %1 %2…</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annulla</translation>
    </message>
    <message>
        <source>The signature of the release information is too large to be a signature.</source>
        <translation>La firma delle informazioni sulle versioni è troppo grande per essere una firma.</translation>
    </message>
    <message>
        <source>The release information from the update server was refused: it is not signed (its signature %1 could not be fetched: HTTP %2 %3).</source>
        <translation>Le informazioni sulle versioni inviate dal server degli aggiornamenti sono state rifiutate: non sono firmate (impossibile scaricare la firma %1: HTTP %2 %3).</translation>
    </message>
    <message>
        <source>The release information from the update server was refused: %1.</source>
        <translation>Le informazioni sulle versioni inviate dal server degli aggiornamenti sono state rifiutate: %1.</translation>
    </message>
    <message>
        <source>The installer cannot be downloaded: %1.</source>
        <translation>Impossibile scaricare il programma di installazione: %1.</translation>
    </message>
    <message>
        <source>The downloaded installer could not be read again before its start and was deleted.</source>
        <translation>Impossibile rileggere il programma di installazione scaricato prima di avviarlo; è stato eliminato.</translation>
    </message>
    <message>
        <source>The downloaded installer was changed after its check and was deleted; it was not started.</source>
        <translation>Il programma di installazione scaricato è stato modificato dopo la verifica ed è stato eliminato; non è stato avviato.</translation>
    </message>
    <message>
        <source>The installer was not started: %1.</source>
        <translation>Il programma di installazione non è stato avviato: %1.</translation>
    </message>
    <message>
        <source>The installer &quot;%1&quot; could not be started and was deleted.</source>
        <translation>Impossibile avviare il programma di installazione «%1»; è stato eliminato.</translation>
    </message>
</context>
</TS>
