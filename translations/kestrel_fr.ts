<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr">
<context>
    <name>AboutDialog</name>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>System information</source>
        <translation>Informations système</translation>
    </message>
</context>
<context>
    <name>FeedSignature</name>
    <message>
        <source>Could not create a temporary folder for the signature check: %1</source>
        <translation>Impossible de créer un dossier temporaire pour la vérification de la signature : %1</translation>
    </message>
    <message>
        <source>it is signed by another key than the application&apos;s release key</source>
        <translation>elles sont signées par une autre clé que la clé de publication de l’application</translation>
    </message>
    <message>
        <source>its signature does not match its content</source>
        <translation>leur signature ne correspond pas à leur contenu</translation>
    </message>
    <message>
        <source>its signature is not a valid signature</source>
        <translation>leur signature n’est pas une signature valide</translation>
    </message>
    <message>
        <source>Could not write &quot;%1&quot; for the signature check: %2</source>
        <translation>Impossible d’écrire « %1 » pour la vérification de la signature : %2</translation>
    </message>
    <message>
        <source>gpgv (%1) could not be started</source>
        <translation>gpgv (%1) n’a pas pu être lancé</translation>
    </message>
    <message>
        <source>gpgv did not answer within %1 seconds</source>
        <translation>gpgv n’a pas répondu dans les %1 secondes</translation>
    </message>
</context>
<context>
    <name>FormatTableModel</name>
    <message>
        <source>Type</source>
        <translation>Type</translation>
    </message>
    <message>
        <source>ID.</source>
        <translation>ID</translation>
    </message>
    <message>
        <source>Resolution</source>
        <translation>Résolution</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Taille</translation>
    </message>
</context>
<context>
    <name>IdentifierDialog</name>
    <message>
        <source>Machine identifier</source>
        <translation>Identifiant de la machine</translation>
    </message>
    <message>
        <source>The identifier of this computer:</source>
        <translation>L’identifiant de cet ordinateur :</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copier</translation>
    </message>
    <message>
        <source>Copied to the clipboard.</source>
        <translation>Copié dans le presse-papiers.</translation>
    </message>
</context>
<context>
    <name>Identity</name>
    <message>
        <source>simple downloader from YouTube, full version is on Loomfield site</source>
        <translation>téléchargeur simple pour YouTube, la version complète est sur le site Loomfield</translation>
    </message>
</context>
<context>
    <name>InstallerDownload</name>
    <message>
        <source>Could not save the installer as &quot;%1&quot;: %2</source>
        <translation>Impossible d’enregistrer le programme d’installation sous « %1 » : %2</translation>
    </message>
    <message>
        <source>The installer download was redirected to an address that is not allowed: %1.</source>
        <translation>Le téléchargement du programme d’installation a été redirigé vers une adresse non autorisée : %1.</translation>
    </message>
    <message>
        <source>The installer could not be downloaded: the server answered HTTP %1 %2.</source>
        <translation>Impossible de télécharger le programme d’installation : le serveur a répondu HTTP %1 %2.</translation>
    </message>
    <message>
        <source>The installer download stalled: nothing arrived for %1 seconds.</source>
        <translation>Le téléchargement du programme d’installation est bloqué : rien n’est arrivé depuis %1 secondes.</translation>
    </message>
    <message>
        <source>Could not reach the update server: %1</source>
        <translation>Impossible de joindre le serveur de mises à jour : %1</translation>
    </message>
    <message>
        <source>The downloaded installer is damaged (checksum mismatch) and was deleted.</source>
        <translation>Le programme d’installation téléchargé est endommagé (somme de contrôle incorrecte) et a été supprimé.</translation>
    </message>
    <message>
        <source>Could not replace the earlier file &quot;%1&quot;.</source>
        <translation>Impossible de remplacer le fichier existant « %1 ».</translation>
    </message>
    <message>
        <source>Could not rename the installer to &quot;%1&quot;: %2</source>
        <translation>Impossible de renommer le programme d’installation en « %1 » : %2</translation>
    </message>
    <message>
        <source>The installer was refused: it is larger than %1, more than an installer may be.</source>
        <translation>Le programme d’installation a été refusé : il dépasse %1, la taille maximale d’un programme d’installation.</translation>
    </message>
</context>
<context>
    <name>InstallerFolder</name>
    <message>
        <source>there is no folder for the installer on this system</source>
        <translation>ce système n’a pas de dossier pour le programme d’installation</translation>
    </message>
    <message>
        <source>the folder &quot;%1&quot; could not be made ready for the installer</source>
        <extracomment>%1 is the folder&apos;s path.</extracomment>
        <translation>le dossier « %1 » n’a pas pu être préparé pour le programme d’installation</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not lie in the installer&apos;s own folder</source>
        <extracomment>%1 is the installer&apos;s path. Shown inside &quot;The installer was not started: %1.&quot;</extracomment>
        <translation>« %1 » ne se trouve pas dans le dossier réservé au programme d’installation</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a program (.exe)</source>
        <extracomment>%1 is the installer&apos;s path. Shown inside &quot;The installer was not started: %1.&quot;</extracomment>
        <translation>« %1 » n’est pas un programme (.exe)</translation>
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
        <translation>Télécharger une vidéo</translation>
    </message>
    <message>
        <source>Opens the page where you paste the address of a YouTube video</source>
        <translation>Ouvre la page où coller l’adresse d’une vidéo YouTube</translation>
    </message>
    <message>
        <source>Go To Loomfield: Access 1000&apos;s of Sites</source>
        <translation>Aller sur Loomfield : plus de 1000 sites</translation>
    </message>
    <message>
        <source>Opens the Loomfield web site in your browser</source>
        <translation>Ouvre le site Loomfield dans votre navigateur</translation>
    </message>
    <message>
        <source>Go To Loomfield&lt;br&gt;Access 1000&apos;s of Sites</source>
        <translation>Aller sur Loomfield&lt;br&gt;Plus de 1000 sites</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Retour</translation>
    </message>
    <message>
        <source>Returns to the start page</source>
        <translation>Revient à la page d’accueil</translation>
    </message>
    <message>
        <source>Video address</source>
        <translation>Adresse de la vidéo</translation>
    </message>
    <message>
        <source>The address of a YouTube video; press Enter to look it up</source>
        <translation>L’adresse d’une vidéo YouTube ; appuyez sur Entrée pour la rechercher</translation>
    </message>
    <message>
        <source>Process</source>
        <translation>Analyser</translation>
    </message>
    <message>
        <source>Looks up the video and lists its formats</source>
        <translation>Recherche la vidéo et liste ses formats</translation>
    </message>
    <message>
        <source>Stops looking up the video and returns to its address</source>
        <translation>Arrête la recherche de la vidéo et revient à son adresse</translation>
    </message>
    <message>
        <source>Title of the video</source>
        <translation>Titre de la vidéo</translation>
    </message>
    <message>
        <source>title</source>
        <translation>titre</translation>
    </message>
    <message>
        <source>Duration of the video</source>
        <translation>Durée de la vidéo</translation>
    </message>
    <message>
        <source>00:00:00</source>
        <translation>00:00:00</translation>
    </message>
    <message>
        <source>Looking up the video</source>
        <translation>Recherche de la vidéo</translation>
    </message>
    <message>
        <source>Shown until the video&apos;s formats are listed</source>
        <translation>Affiché jusqu’à ce que les formats de la vidéo soient listés</translation>
    </message>
    <message>
        <source>Formats</source>
        <translation>Formats</translation>
    </message>
    <message>
        <source>The video&apos;s formats, largest first: type, resolution and size. Press Enter or click a format to download it</source>
        <translation>Les formats de la vidéo, du plus grand au plus petit : type, résolution et taille. Appuyez sur Entrée ou cliquez sur un format pour le télécharger</translation>
    </message>
    <message>
        <source>Returns to the list of formats</source>
        <translation>Revient à la liste des formats</translation>
    </message>
    <message>
        <source>Downloading: </source>
        <translation>Téléchargement : </translation>
    </message>
    <message>
        <source>Video Successfully Downloaded</source>
        <translation>Vidéo téléchargée avec succès</translation>
    </message>
    <message>
        <source>Download progress</source>
        <translation>Progression du téléchargement</translation>
    </message>
    <message>
        <source>How much of the video has been downloaded</source>
        <translation>La part de la vidéo déjà téléchargée</translation>
    </message>
    <message>
        <source>Starts again with the address of another video</source>
        <translation>Recommence avec l’adresse d’une autre vidéo</translation>
    </message>
    <message>
        <source>Start Over</source>
        <translation>Recommencer</translation>
    </message>
    <message>
        <source>Opens the folder with the downloaded video</source>
        <translation>Ouvre le dossier contenant la vidéo téléchargée</translation>
    </message>
    <message>
        <source>Open Folder with File</source>
        <translation>Ouvrir le dossier</translation>
    </message>
    <message>
        <source>Stops the download</source>
        <translation>Arrête le téléchargement</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Please wait</source>
        <translation>Veuillez patienter</translation>
    </message>
    <message>
        <source>Shown while the program is busy</source>
        <translation>Affiché pendant que le programme est occupé</translation>
    </message>
    <message>
        <source>| %1 sec.</source>
        <translation>| %1 s</translation>
    </message>
    <message>
        <source>Cannot request metadata</source>
        <translation>Impossible d’obtenir les métadonnées</translation>
    </message>
    <message>
        <source>crash exit on metadata request</source>
        <translation>arrêt brutal lors de la demande des métadonnées</translation>
    </message>
    <message>
        <source>crash exit on formats request</source>
        <translation>arrêt brutal lors de la demande des formats</translation>
    </message>
    <message>
        <source>crash exit at downloading process</source>
        <translation>arrêt brutal pendant le téléchargement</translation>
    </message>
    <message>
        <source>format count error</source>
        <translation>erreur sur le nombre de formats</translation>
    </message>
    <message>
        <source>cannot start the downloader tool</source>
        <translation>impossible de lancer l’outil de téléchargement</translation>
    </message>
    <message>
        <source>indefinite</source>
        <translation>erreur inconnue</translation>
    </message>
    <message>
        <source>WARNING</source>
        <translation>AVERTISSEMENT</translation>
    </message>
    <message>
        <source>WARNING: You must provide at least some valid YouTube URL to proceed</source>
        <translation>AVERTISSEMENT : vous devez indiquer une adresse YouTube valide pour continuer</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titre</translation>
    </message>
    <message>
        <source>&lt;h3&gt;ERROR:&lt;/h3&gt;%1&lt;hr&gt;&lt;i&gt;Code: #0x%2&lt;/i&gt;</source>
        <extracomment>%1 is the kind of failure, %2 its code in hexadecimal.</extracomment>
        <translation>&lt;h3&gt;ERREUR :&lt;/h3&gt;%1&lt;hr&gt;&lt;i&gt;Code : #0x%2&lt;/i&gt;</translation>
    </message>
    <message>
        <source>ERROR</source>
        <translation>ERREUR</translation>
    </message>
    <message>
        <source>Unable to update. Please contact support</source>
        <translation>Mise à jour impossible. Veuillez contacter l’assistance</translation>
    </message>
    <message>
        <source>Success</source>
        <translation>Mise à jour réussie</translation>
    </message>
    <message>
        <source>KestrelDownloader was successfully updated</source>
        <translation>KestrelDownloader a été mis à jour avec succès</translation>
    </message>
    <message>
        <source>Manually Update Software</source>
        <translation>Mettre à jour le logiciel manuellement</translation>
    </message>
    <message>
        <source>Logging enabled</source>
        <translation>Journalisation activée</translation>
    </message>
    <message>
        <source>Change Scale Size</source>
        <translation>Changer l’échelle d’affichage</translation>
    </message>
    <message>
        <source>%1%</source>
        <extracomment>A display scale in percent, as 130%.</extracomment>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>Show UUID</source>
        <translation>Afficher l’UUID</translation>
    </message>
    <message>
        <source>About</source>
        <translation>À propos</translation>
    </message>
    <message>
        <source>%1 version: %2</source>
        <translation>%1, version %2</translation>
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
        <translation>« releaseNumber » est absent ou n’est pas un nombre</translation>
    </message>
    <message>
        <source>&quot;releaseNumber&quot; is not a positive whole number</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>« releaseNumber » n’est pas un nombre entier positif</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is missing or not a text</source>
        <extracomment>%1 is a key of the release feed file, as &quot;version&quot;; it stays as it is.</extracomment>
        <translation>« %1 » est absent ou n’est pas un texte</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot;: %2</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;), %2 what is wrong with its entry.</extracomment>
        <translation>programme d’installation pour « %1 » : %2</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot;: &quot;sha256&quot; is not 64 hexadecimal digits</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;); &quot;sha256&quot; is a key of that file and stays as it is.</extracomment>
        <translation>programme d’installation pour « %1 » : « sha256 » ne compte pas 64 chiffres hexadécimaux</translation>
    </message>
    <message>
        <source>not valid JSON (%1 at offset %2)</source>
        <extracomment>%1 is the JSON reader&apos;s own message, %2 the position in the file where it stopped.</extracomment>
        <translation>JSON non valide (%1 à la position %2)</translation>
    </message>
    <message>
        <source>the document is not a JSON object</source>
        <translation>le document n’est pas un objet JSON</translation>
    </message>
    <message>
        <source>&quot;version&quot; is too long</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>« version » est trop long</translation>
    </message>
    <message>
        <source>&quot;buildDate&quot; is not of the form NN.NNNN</source>
        <extracomment>&quot;buildDate&quot; is a key of the release feed file and stays as it is; NN.NNNN shows the form of its value (two digits, a dot, four digits).</extracomment>
        <translation>« buildDate » n’est pas de la forme NN.NNNN</translation>
    </message>
    <message>
        <source>&quot;installers&quot; is missing or not an object</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>« installers » est absent ou n’est pas un objet</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot; is not an object</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;).</extracomment>
        <translation>l’entrée du programme d’installation pour « %1 » n’est pas un objet</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a usable address</source>
        <extracomment>%1 is a web address. Shown inside &quot;The update address %1.&quot; and similar messages.</extracomment>
        <translation>« %1 » n’est pas une adresse utilisable</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was refused: only secure https addresses are accepted</source>
        <extracomment>%1 is a web address. Shown inside &quot;The update address %1.&quot; and similar messages.</extracomment>
        <translation>« %1 » a été refusée : seules les adresses https sécurisées sont acceptées</translation>
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
        <translation>Système d’exploitation : %1</translation>
    </message>
    <message>
        <source>Kernel: %1 %2</source>
        <translation>Noyau : %1 %2</translation>
    </message>
    <message>
        <source>CPU architecture: %1</source>
        <translation>Architecture du processeur : %1</translation>
    </message>
    <message>
        <source>Qt version: %1</source>
        <translation>Version de Qt : %1</translation>
    </message>
</context>
<context>
    <name>UpdaterPlugin</name>
    <message>
        <source>The update address %1.</source>
        <translation>L’adresse de mise à jour %1.</translation>
    </message>
    <message>
        <source>The update server redirected to an address that is not allowed: %1.</source>
        <translation>Le serveur de mises à jour a redirigé vers une adresse non autorisée : %1.</translation>
    </message>
    <message>
        <source>The release information from the update server is too large to be a release feed.</source>
        <translation>Les informations de version du serveur de mises à jour sont trop volumineuses pour un flux de versions.</translation>
    </message>
    <message>
        <source>Could not get the release information: the update server answered HTTP %1 %2.</source>
        <translation>Impossible d’obtenir les informations de version : le serveur de mises à jour a répondu HTTP %1 %2.</translation>
    </message>
    <message>
        <source>The update server did not answer within %1 seconds.</source>
        <translation>Le serveur de mises à jour n’a pas répondu dans les %1 secondes.</translation>
    </message>
    <message>
        <source>Could not reach the update server: %1</source>
        <translation>Impossible de joindre le serveur de mises à jour : %1</translation>
    </message>
    <message>
        <source>The release information from the update server is not readable: %1.</source>
        <translation>Les informations de version du serveur de mises à jour sont illisibles : %1.</translation>
    </message>
    <message>
        <source>You have the latest version of %1.

The newest release on the update server is %2 (build %3).</source>
        <translation>Vous avez la dernière version de %1.

La version la plus récente sur le serveur de mises à jour est %2 (build %3).</translation>
    </message>
    <message>
        <source>Version %1 of %2 is available, but the update server offers no installer for this system.</source>
        <translation>La version %1 de %2 est disponible, mais le serveur de mises à jour ne propose pas de programme d’installation pour ce système.</translation>
    </message>
    <message>
        <source>Version %1 (build %2) of %3 is available.

Do you want to download and install it now?</source>
        <translation>La version %1 (build %2) de %3 est disponible.

Voulez-vous la télécharger et l’installer maintenant ?</translation>
    </message>
    <message>
        <source>Downloading %1 %2…
%3 of %4</source>
        <translation>Téléchargement de %1 %2…
%3 sur %4</translation>
    </message>
    <message>
        <source>Downloading %1 %2…
%3</source>
        <translation>Téléchargement de %1 %2…
%3</translation>
    </message>
    <message>
        <source>Version %1 of %2 is being installed.

Please restart %2 once its installer has finished.</source>
        <translation>La version %1 de %2 est en cours d’installation.

Veuillez redémarrer %2 une fois l’installation terminée.</translation>
    </message>
    <message>
        <source>Software Update</source>
        <translation>Mise à jour du logiciel</translation>
    </message>
    <message>
        <source>Downloading %1 %2…</source>
        <translation>Téléchargement de %1 %2…</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>The signature of the release information is too large to be a signature.</source>
        <translation>La signature des informations de version est trop volumineuse pour être une signature.</translation>
    </message>
    <message>
        <source>The release information from the update server was refused: it is not signed (its signature %1 could not be fetched: HTTP %2 %3).</source>
        <translation>Les informations de version du serveur de mises à jour ont été refusées : elles ne sont pas signées (leur signature %1 n’a pas pu être récupérée : HTTP %2 %3).</translation>
    </message>
    <message>
        <source>The release information from the update server was refused: %1.</source>
        <translation>Les informations de version du serveur de mises à jour ont été refusées : %1.</translation>
    </message>
    <message>
        <source>The installer cannot be downloaded: %1.</source>
        <translation>Le programme d’installation ne peut pas être téléchargé : %1.</translation>
    </message>
    <message>
        <source>The downloaded installer could not be read again before its start and was deleted.</source>
        <translation>Le programme d’installation téléchargé n’a pas pu être relu avant son lancement et a été supprimé.</translation>
    </message>
    <message>
        <source>The downloaded installer was changed after its check and was deleted; it was not started.</source>
        <translation>Le programme d’installation téléchargé a été modifié après sa vérification et a été supprimé ; il n’a pas été lancé.</translation>
    </message>
    <message>
        <source>The installer was not started: %1.</source>
        <translation>Le programme d’installation n’a pas été lancé : %1.</translation>
    </message>
    <message>
        <source>The installer &quot;%1&quot; could not be started and was deleted.</source>
        <translation>Le programme d’installation « %1 » n’a pas pu être lancé et a été supprimé.</translation>
    </message>
</context>
</TS>
