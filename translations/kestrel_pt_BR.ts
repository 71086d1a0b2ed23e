<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="pt_BR">
<context>
    <name>AboutDialog</name>
    <message>
        <source>Version %1</source>
        <translation>Versão %1</translation>
    </message>
    <message>
        <source>System information</source>
        <translation>Informações do sistema</translation>
    </message>
</context>
<context>
    <name>FeedSignature</name>
    <message>
        <source>Could not create a temporary folder for the signature check: %1</source>
        <translation>Não foi possível criar uma pasta temporária para verificar a assinatura: %1</translation>
    </message>
    <message>
        <source>it is signed by another key than the application&apos;s release key</source>
        <translation>elas foram assinadas com uma chave diferente da chave de publicação do aplicativo</translation>
    </message>
    <message>
        <source>its signature does not match its content</source>
        <translation>a assinatura não corresponde ao conteúdo</translation>
    </message>
    <message>
        <source>its signature is not a valid signature</source>
        <translation>a assinatura não é uma assinatura válida</translation>
    </message>
    <message>
        <source>Could not write &quot;%1&quot; for the signature check: %2</source>
        <translation>Não foi possível gravar &quot;%1&quot; para verificar a assinatura: %2</translation>
    </message>
    <message>
        <source>gpgv (%1) could not be started</source>
        <translation>não foi possível iniciar o gpgv (%1)</translation>
    </message>
    <message>
        <source>gpgv did not answer within %1 seconds</source>
        <translation>o gpgv não respondeu em %1 segundos</translation>
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
        <translation>Resolução</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Tamanho</translation>
    </message>
</context>
<context>
    <name>IdentifierDialog</name>
    <message>
        <source>Machine identifier</source>
        <translation>Identificador da máquina</translation>
    </message>
    <message>
        <source>The identifier of this computer:</source>
        <translation>O identificador deste computador:</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copiar</translation>
    </message>
    <message>
        <source>Copied to the clipboard.</source>
        <translation>Copiado para a área de transferência.</translation>
    </message>
</context>
<context>
    <name>Identity</name>
    <message>
        <source>simple downloader from YouTube, full version is on Loomfield site</source>
        <translation>baixador simples do YouTube; a versão completa está no site da Loomfield</translation>
    </message>
</context>
<context>
    <name>InstallerDownload</name>
    <message>
        <source>Could not save the installer as &quot;%1&quot;: %2</source>
        <translation>Não foi possível salvar o instalador como &quot;%1&quot;: %2</translation>
    </message>
    <message>
        <source>The installer download was redirected to an address that is not allowed: %1.</source>
        <translation>O download do instalador foi redirecionado para um endereço não permitido: %1.</translation>
    </message>
    <message>
        <source>The installer could not be downloaded: the server answered HTTP %1 %2.</source>
        <translation>Não foi possível baixar o instalador: o servidor respondeu HTTP %1 %2.</translation>
    </message>
    <message>
        <source>The installer download stalled: nothing arrived for %1 seconds.</source>
        <translation>O download do instalador travou: nada chegou em %1 segundos.</translation>
    </message>
    <message>
        <source>Could not reach the update server: %1</source>
        <translation>Não foi possível acessar o servidor de atualizações: %1</translation>
    </message>
    <message>
        <source>The downloaded installer is damaged (checksum mismatch) and was deleted.</source>
        <translation>O instalador baixado está corrompido (soma de verificação incorreta) e foi excluído.</translation>
    </message>
    <message>
        <source>Could not replace the earlier file &quot;%1&quot;.</source>
        <translation>Não foi possível substituir o arquivo anterior &quot;%1&quot;.</translation>
    </message>
    <message>
        <source>Could not rename the installer to &quot;%1&quot;: %2</source>
        <translation>Não foi possível renomear o instalador para &quot;%1&quot;: %2</translation>
    </message>
    <message>
        <source>The installer was refused: it is larger than %1, more than an installer may be.</source>
        <translation>O instalador foi recusado: ele tem mais de %1, o tamanho máximo de um instalador.</translation>
    </message>
</context>
<context>
    <name>InstallerFolder</name>
    <message>
        <source>there is no folder for the installer on this system</source>
        <translation>este sistema não tem uma pasta para o instalador</translation>
    </message>
    <message>
        <source>the folder &quot;%1&quot; could not be made ready for the installer</source>
        <extracomment>%1 is the folder&apos;s path.</extracomment>
        <translation>não foi possível preparar a pasta &quot;%1&quot; para o instalador</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not lie in the installer&apos;s own folder</source>
        <extracomment>%1 is the installer&apos;s path. Shown inside &quot;The installer was not started: %1.&quot;</extracomment>
        <translation>&quot;%1&quot; não está na pasta própria do instalador</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a program (.exe)</source>
        <extracomment>%1 is the installer&apos;s path. Shown inside &quot;The installer was not started: %1.&quot;</extracomment>
        <translation>&quot;%1&quot; não é um programa (.exe)</translation>
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
        <translation>Baixar um vídeo</translation>
    </message>
    <message>
        <source>Opens the page where you paste the address of a YouTube video</source>
        <translation>Abre a página onde você cola o endereço de um vídeo do YouTube</translation>
    </message>
    <message>
        <source>Go To Loomfield: Access 1000&apos;s of Sites</source>
        <translation>Ir para a Loomfield: acesso a mais de 1000 sites</translation>
    </message>
    <message>
        <source>Opens the Loomfield web site in your browser</source>
        <translation>Abre o site da Loomfield no navegador</translation>
    </message>
    <message>
        <source>Go To Loomfield&lt;br&gt;Access 1000&apos;s of Sites</source>
        <translation>Ir para a Loomfield&lt;br&gt;Acesso a mais de 1000 sites</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Voltar</translation>
    </message>
    <message>
        <source>Returns to the start page</source>
        <translation>Volta para a página inicial</translation>
    </message>
    <message>
        <source>Video address</source>
        <translation>Endereço do vídeo</translation>
    </message>
    <message>
        <source>The address of a YouTube video; press Enter to look it up</source>
        <translation>O endereço de um vídeo do YouTube; pressione Enter para consultá-lo</translation>
    </message>
    <message>
        <source>Process</source>
        <translation>Processar</translation>
    </message>
    <message>
        <source>Looks up the video and lists its formats</source>
        <translation>Consulta o vídeo e lista seus formatos</translation>
    </message>
    <message>
        <source>Stops looking up the video and returns to its address</source>
        <translation>Interrompe a consulta do vídeo e volta ao endereço</translation>
    </message>
    <message>
        <source>Title of the video</source>
        <translation>Título do vídeo</translation>
    </message>
    <message>
        <source>title</source>
        <translation>título</translation>
    </message>
    <message>
        <source>Duration of the video</source>
        <translation>Duração do vídeo</translation>
    </message>
    <message>
        <source>00:00:00</source>
        <translation>00:00:00</translation>
    </message>
    <message>
        <source>Looking up the video</source>
        <translation>Consultando o vídeo</translation>
    </message>
    <message>
        <source>Shown until the video&apos;s formats are listed</source>
        <translation>Exibido até que os formatos do vídeo sejam listados</translation>
    </message>
    <message>
        <source>Formats</source>
        <translation>Formatos</translation>
    </message>
    <message>
        <source>The video&apos;s formats, largest first: type, resolution and size. Press Enter or click a format to download it</source>
        <translation>Os formatos do vídeo, do maior para o menor: tipo, resolução e tamanho. Pressione Enter ou clique em um formato para baixá-lo</translation>
    </message>
    <message>
        <source>Returns to the list of formats</source>
        <translation>Volta para a lista de formatos</translation>
    </message>
    <message>
        <source>Downloading: </source>
        <translation>Baixando: </translation>
    </message>
    <message>
        <source>Video Successfully Downloaded</source>
        <translation>Vídeo baixado com sucesso</translation>
    </message>
    <message>
        <source>Download progress</source>
        <translation>Progresso do download</translation>
    </message>
    <message>
        <source>How much of the video has been downloaded</source>
        <translation>Quanto do vídeo já foi baixado</translation>
    </message>
    <message>
        <source>Starts again with the address of another video</source>
        <translation>Recomeça com o endereço de outro vídeo</translation>
    </message>
    <message>
        <source>Start Over</source>
        <translation>Recomeçar</translation>
    </message>
    <message>
        <source>Opens the folder with the downloaded video</source>
        <translation>Abre a pasta com o vídeo baixado</translation>
    </message>
    <message>
        <source>Open Folder with File</source>
        <translation>Abrir pasta do arquivo</translation>
    </message>
    <message>
        <source>Stops the download</source>
        <translation>Interrompe o download</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Please wait</source>
        <translation>Aguarde</translation>
    </message>
    <message>
        <source>Shown while the program is busy</source>
        <translation>Exibido enquanto o programa está ocupado</translation>
    </message>
    <message>
        <source>| %1 sec.</source>
        <translation>| %1 s</translation>
    </message>
    <message>
        <source>Cannot request metadata</source>
        <translation>Não foi possível obter os metadados</translation>
    </message>
    <message>
        <source>crash exit on metadata request</source>
        <translation>falha ao solicitar os metadados</translation>
    </message>
    <message>
        <source>crash exit on formats request</source>
        <translation>falha ao solicitar os formatos</translation>
    </message>
    <message>
        <source>crash exit at downloading process</source>
        <translation>falha durante o download</translation>
    </message>
    <message>
        <source>format count error</source>
        <translation>erro na contagem de formatos</translation>
    </message>
    <message>
        <source>cannot start the downloader tool</source>
        <translation>não foi possível iniciar a ferramenta de download</translation>
    </message>
    <message>
        <source>indefinite</source>
        <translation>erro desconhecido</translation>
    </message>
    <message>
        <source>WARNING</source>
        <translation>AVISO</translation>
    </message>
    <message>
        <source>WARNING: You must provide at least some valid YouTube URL to proceed</source>
        <translation>AVISO: informe um endereço válido do YouTube para continuar</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Título</translation>
    </message>
    <message>
        <source>&lt;h3&gt;ERROR:&lt;/h3&gt;%1&lt;hr&gt;&lt;i&gt;Code: #0x%2&lt;/i&gt;</source>
        <extracomment>%1 is the kind of failure, %2 its code in hexadecimal.</extracomment>
        <translation>&lt;h3&gt;ERRO:&lt;/h3&gt;%1&lt;hr&gt;&lt;i&gt;Código: #0x%2&lt;/i&gt;</translation>
    </message>
    <message>
        <source>ERROR</source>
        <translation>ERRO</translation>
    </message>
    <message>
        <source>Unable to update. Please contact support</source>
        <translation>Não foi possível atualizar. Entre em contato com o suporte</translation>
    </message>
    <message>
        <source>Success</source>
        <translation>Atualização concluída</translation>
    </message>
    <message>
        <source>KestrelDownloader was successfully updated</source>
        <translation>O KestrelDownloader foi atualizado com sucesso</translation>
    </message>
    <message>
        <source>Manually Update Software</source>
        <translation>Atualizar o programa manualmente</translation>
    </message>
    <message>
        <source>Logging enabled</source>
        <translation>Registro ativado</translation>
    </message>
    <message>
        <source>Change Scale Size</source>
        <translation>Alterar escala</translation>
    </message>
    <message>
        <source>%1%</source>
        <extracomment>A display scale in percent, as 130%.</extracomment>
        <translation>%1%</translation>
    </message>
    <message>
        <source>Show UUID</source>
        <translation>Mostrar UUID</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Sobre</translation>
    </message>
    <message>
        <source>%1 version: %2</source>
        <translation>%1, versão %2</translation>
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
        <translation>&quot;releaseNumber&quot; está ausente ou não é um número</translation>
    </message>
    <message>
        <source>&quot;releaseNumber&quot; is not a positive whole number</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>&quot;releaseNumber&quot; não é um número inteiro positivo</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is missing or not a text</source>
        <extracomment>%1 is a key of the release feed file, as &quot;version&quot;; it stays as it is.</extracomment>
        <translation>&quot;%1&quot; está ausente ou não é um texto</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot;: %2</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;), %2 what is wrong with its entry.</extracomment>
        <translation>instalador para &quot;%1&quot;: %2</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot;: &quot;sha256&quot; is not 64 hexadecimal digits</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;); &quot;sha256&quot; is a key of that file and stays as it is.</extracomment>
        <translation>instalador para &quot;%1&quot;: &quot;sha256&quot; não tem 64 dígitos hexadecimais</translation>
    </message>
    <message>
        <source>not valid JSON (%1 at offset %2)</source>
        <extracomment>%1 is the JSON reader&apos;s own message, %2 the position in the file where it stopped.</extracomment>
        <translation>JSON inválido (%1 na posição %2)</translation>
    </message>
    <message>
        <source>the document is not a JSON object</source>
        <translation>o documento não é um objeto JSON</translation>
    </message>
    <message>
        <source>&quot;version&quot; is too long</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>&quot;version&quot; é longo demais</translation>
    </message>
    <message>
        <source>&quot;buildDate&quot; is not of the form NN.NNNN</source>
        <extracomment>&quot;buildDate&quot; is a key of the release feed file and stays as it is; NN.NNNN shows the form of its value (two digits, a dot, four digits).</extracomment>
        <translation>&quot;buildDate&quot; não está no formato NN.NNNN</translation>
    </message>
    <message>
        <source>&quot;installers&quot; is missing or not an object</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>&quot;installers&quot; está ausente ou não é um objeto</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot; is not an object</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;).</extracomment>
        <translation>a entrada do instalador para &quot;%1&quot; não é um objeto</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a usable address</source>
        <extracomment>%1 is a web address. Shown inside &quot;The update address %1.&quot; and similar messages.</extracomment>
        <translation>&quot;%1&quot; não é um endereço válido</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was refused: only secure https addresses are accepted</source>
        <extracomment>%1 is a web address. Shown inside &quot;The update address %1.&quot; and similar messages.</extracomment>
        <translation>&quot;%1&quot; foi recusado: só são aceitos endereços https seguros</translation>
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
        <translation>Sistema operacional: %1</translation>
    </message>
    <message>
        <source>Kernel: %1 %2</source>
        <translation>Kernel: %1 %2</translation>
    </message>
    <message>
        <source>CPU architecture: %1</source>
        <translation>Arquitetura da CPU: %1</translation>
    </message>
    <message>
        <source>Qt version: %1</source>
        <translation>Versão do Qt: %1</translation>
    </message>
</context>
<context>
    <name>UpdaterPlugin</name>
    <message>
        <source>The update address %1.</source>
        <translation>O endereço de atualização %1.</translation>
    </message>
    <message>
        <source>The update server redirected to an address that is not allowed: %1.</source>
        <translation>O servidor de atualizações redirecionou para um endereço não permitido: %1.</translation>
    </message>
    <message>
        <source>The release information from the update server is too large to be a release feed.</source>
        <translation>As informações de versão do servidor de atualizações são grandes demais para um feed de versões.</translation>
    </message>
    <message>
        <source>Could not get the release information: the update server answered HTTP %1 %2.</source>
        <translation>Não foi possível obter as informações de versão: o servidor de atualizações respondeu HTTP %1 %2.</translation>
    </message>
    <message>
        <source>The update server did not answer within %1 seconds.</source>
        <translation>O servidor de atualizações não respondeu em %1 segundos.</translation>
    </message>
    <message>
        <source>Could not reach the update server: %1</source>
        <translation>Não foi possível acessar o servidor de atualizações: %1</translation>
    </message>
    <message>
        <source>The release information from the update server is not readable: %1.</source>
        <translation>Não foi possível ler as informações de versão do servidor de atualizações: %1.</translation>
    </message>
    <message>
        <source>You have the latest version of %1.

The newest release on the update server is %2 (build %3).</source>
        <translation>Você já tem a versão mais recente do %1.

A versão mais nova no servidor de atualizações é %2 (build %3).</translation>
    </message>
    <message>
        <source>Version %1 of %2 is available, but the update server offers no installer for this system.</source>
        <translation>A versão %1 do %2 está disponível, mas o servidor de atualizações não oferece instalador para este sistema.</translation>
    </message>
    <message>
        <source>Version %1 (build %2) of %3 is available.

Do you want to download and install it now?</source>
        <translation>A versão %1 (build %2) do %3 está disponível.

Deseja baixá-la e instalá-la agora?</translation>
    </message>
    <message>
        <source>Downloading %1 %2…
%3 of %4</source>
        <translation>Baixando %1 %2…
%3 de %4</translation>
    </message>
    <message>
        <source>Downloading %1 %2…
%3</source>
        <translation>Baixando %1 %2…
%3</translation>
    </message>
    <message>
        <source>Version %1 of %2 is being installed.

Please restart %2 once its installer has finished.</source>
        <translation>A versão %1 do %2 está sendo instalada.

Reinicie o %2 quando o instalador terminar.</translation>
    </message>
    <message>
        <source>Software Update</source>
        <translation>Atualização de software</translation>
    </message>
    <message>
        <source>Downloading %1 %2…</source>
        <translation>Baixando %1 %2…</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>The signature of the release information is too large to be a signature.</source>
        <translation>A assinatura das informações de versão é grande demais para ser uma assinatura.</translation>
    </message>
    <message>
        <source>The release information from the update server was refused: it is not signed (its signature %1 could not be fetched: HTTP %2 %3).</source>
        <translation>As informações de versão do servidor de atualizações foram recusadas: elas não estão assinadas (não foi possível obter a assinatura %1: HTTP %2 %3).</translation>
    </message>
    <message>
        <source>The release information from the update server was refused: %1.</source>
        <translation>As informações de versão do servidor de atualizações foram recusadas: %1.</translation>
    </message>
    <message>
        <source>The installer cannot be downloaded: %1.</source>
        <translation>Não é possível baixar o instalador: %1.</translation>
    </message>
    <message>
        <source>The downloaded installer could not be read again before its start and was deleted.</source>
        <translation>Não foi possível ler novamente o instalador baixado antes de iniciá-lo, e ele foi excluído.</translation>
    </message>
    <message>
        <source>The downloaded installer was changed after its check and was deleted; it was not started.</source>
        <translation>O instalador baixado foi alterado depois da verificação e foi excluído; ele não foi iniciado.</translation>
    </message>
    <message>
        <source>The installer was not started: %1.</source>
        <translation>O instalador não foi iniciado: %1.</translation>
    </message>
    <message>
        <source>The installer &quot;%1&quot; could not be started and was deleted.</source>
        <translation>Não foi possível iniciar o instalador &quot;%1&quot;, e ele foi excluído.</translation>
    </message>
</context>
</TS>
