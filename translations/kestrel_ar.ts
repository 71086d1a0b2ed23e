<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar">
<context>
    <name>AboutDialog</name>
    <message>
        <source>Version %1</source>
        <translation>الإصدار %1</translation>
    </message>
    <message>
        <source>System information</source>
        <translation>معلومات النظام</translation>
    </message>
</context>
<context>
    <name>FeedSignature</name>
    <message>
        <source>Could not create a temporary folder for the signature check: %1</source>
        <translation>تعذّر إنشاء مجلد مؤقت للتحقق من التوقيع: %1</translation>
    </message>
    <message>
        <source>it is signed by another key than the application&apos;s release key</source>
        <translation>إنها موقّعة بمفتاح غير مفتاح إصدارات التطبيق</translation>
    </message>
    <message>
        <source>its signature does not match its content</source>
        <translation>توقيعها لا يطابق محتواها</translation>
    </message>
    <message>
        <source>its signature is not a valid signature</source>
        <translation>توقيعها ليس توقيعًا صالحًا</translation>
    </message>
    <message>
        <source>Could not write &quot;%1&quot; for the signature check: %2</source>
        <translation>تعذّرت كتابة &quot;%1&quot; للتحقق من التوقيع: %2</translation>
    </message>
    <message>
        <source>gpgv (%1) could not be started</source>
        <translation>تعذّر تشغيل gpgv (%1)</translation>
    </message>
    <message>
        <source>gpgv did not answer within %1 seconds</source>
        <translation>لم يستجب gpgv خلال %1 ثانية</translation>
    </message>
</context>
<context>
    <name>FormatTableModel</name>
    <message>
        <source>Type</source>
        <translation>النوع</translation>
    </message>
    <message>
        <source>ID.</source>
        <translation>المعرّف</translation>
    </message>
    <message>
        <source>Resolution</source>
        <translation>الدقة</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>الحجم</translation>
    </message>
</context>
<context>
    <name>IdentifierDialog</name>
    <message>
        <source>Machine identifier</source>
        <translation>معرّف الجهاز</translation>
    </message>
    <message>
        <source>The identifier of this computer:</source>
        <translation>معرّف هذا الحاسوب:</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;نسخ</translation>
    </message>
    <message>
        <source>Copied to the clipboard.</source>
        <translation>نُسخ إلى الحافظة.</translation>
    </message>
</context>
<context>
    <name>Identity</name>
    <message>
        <source>simple downloader from YouTube, full version is on Loomfield site</source>
        <translation>أداة بسيطة لتنزيل فيديوهات YouTube، والإصدار الكامل متوفر على موقع Loomfield</translation>
    </message>
</context>
<context>
    <name>InstallerDownload</name>
    <message>
        <source>Could not save the installer as &quot;%1&quot;: %2</source>
        <translation>تعذّر حفظ المثبّت باسم &quot;%1&quot;: %2</translation>
    </message>
    <message>
        <source>The installer download was redirected to an address that is not allowed: %1.</source>
        <translation>أُعيد توجيه تنزيل المثبّت إلى عنوان غير مسموح به: %1.</translation>
    </message>
    <message>
        <source>The installer could not be downloaded: the server answered HTTP %1 %2.</source>
        <translation>تعذّر تنزيل المثبّت: ردّ الخادم بـ HTTP %1 %2.</translation>
    </message>
    <message>
        <source>The installer download stalled: nothing arrived for %1 seconds.</source>
        <translation>توقّف تنزيل المثبّت: لم يصل شيء منذ %1 ثانية.</translation>
    </message>
    <message>
        <source>Could not reach the update server: %1</source>
        <translation>تعذّر الوصول إلى خادم التحديثات: %1</translation>
    </message>
    <message>
        <source>The downloaded installer is damaged (checksum mismatch) and was deleted.</source>
        <translation>المثبّت الذي نُزّل تالف (المجموع الاختباري غير مطابق) وقد حُذف.</translation>
    </message>
    <message>
        <source>Could not replace the earlier file &quot;%1&quot;.</source>
        <translation>تعذّر استبدال الملف السابق &quot;%1&quot;.</translation>
    </message>
    <message>
        <source>Could not rename the installer to &quot;%1&quot;: %2</source>
        <translation>تعذّرت إعادة تسمية المثبّت إلى &quot;%1&quot;: %2</translation>
    </message>
    <message>
        <source>The installer was refused: it is larger than %1, more than an installer may be.</source>
        <translation>رُفض المثبّت: حجمه أكبر من %1، وهو الحد الأقصى لحجم المثبّت.</translation>
    </message>
</context>
<context>
    <name>InstallerFolder</name>
    <message>
        <source>there is no folder for the installer on this system</source>
        <translation>لا يوجد مجلد للمثبّت على هذا النظام</translation>
    </message>
    <message>
        <source>the folder &quot;%1&quot; could not be made ready for the installer</source>
        <extracomment>%1 is the folder&apos;s path.</extracomment>
        <translation>تعذّر تجهيز المجلد &quot;%1&quot; للمثبّت</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not lie in the installer&apos;s own folder</source>
        <extracomment>%1 is the installer&apos;s path. Shown inside &quot;The installer was not started: %1.&quot;</extracomment>
        <translation>&quot;%1&quot; ليس في المجلد الخاص بالمثبّت</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a program (.exe)</source>
        <extracomment>%1 is the installer&apos;s path. Shown inside &quot;The installer was not started: %1.&quot;</extracomment>
        <translation>&quot;%1&quot; ليس برنامجًا (.exe)</translation>
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
        <translation>تنزيل فيديو</translation>
    </message>
    <message>
        <source>Opens the page where you paste the address of a YouTube video</source>
        <translation>يفتح الصفحة التي تلصق فيها رابط فيديو من YouTube</translation>
    </message>
    <message>
        <source>Go To Loomfield: Access 1000&apos;s of Sites</source>
        <translation>انتقل إلى Loomfield: أكثر من 1000 موقع</translation>
    </message>
    <message>
        <source>Opens the Loomfield web site in your browser</source>
        <translation>يفتح موقع Loomfield في المتصفح</translation>
    </message>
    <message>
        <source>Go To Loomfield&lt;br&gt;Access 1000&apos;s of Sites</source>
        <translation>انتقل إلى Loomfield&lt;br&gt;أكثر من 1000 موقع</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>رجوع</translation>
    </message>
    <message>
        <source>Returns to the start page</source>
        <translation>يعود إلى صفحة البداية</translation>
    </message>
    <message>
        <source>Video address</source>
        <translation>رابط الفيديو</translation>
    </message>
    <message>
        <source>The address of a YouTube video; press Enter to look it up</source>
        <translation>رابط فيديو من YouTube؛ اضغط Enter للبحث عنه</translation>
    </message>
    <message>
        <source>Process</source>
        <translation>معالجة</translation>
    </message>
    <message>
        <source>Looks up the video and lists its formats</source>
        <translation>يبحث عن الفيديو ويعرض صيغه</translation>
    </message>
    <message>
        <source>Stops looking up the video and returns to its address</source>
        <translation>يوقف البحث عن الفيديو ويعود إلى رابطه</translation>
    </message>
    <message>
        <source>Title of the video</source>
        <translation>عنوان الفيديو</translation>
    </message>
    <message>
        <source>title</source>
        <translation>العنوان</translation>
    </message>
    <message>
        <source>Duration of the video</source>
        <translation>مدة الفيديو</translation>
    </message>
    <message>
        <source>00:00:00</source>
        <translation>00:00:00</translation>
    </message>
    <message>
        <source>Looking up the video</source>
        <translation>جارٍ البحث عن الفيديو</translation>
    </message>
    <message>
        <source>Shown until the video&apos;s formats are listed</source>
        <translation>يظهر إلى أن تُعرض صيغ الفيديو</translation>
    </message>
    <message>
        <source>Formats</source>
        <translation>الصيغ</translation>
    </message>
    <message>
        <source>The video&apos;s formats, largest first: type, resolution and size. Press Enter or click a format to download it</source>
        <translation>صيغ الفيديو من الأكبر إلى الأصغر: النوع والدقة والحجم. اضغط Enter أو انقر على صيغة لتنزيلها</translation>
    </message>
    <message>
        <source>Returns to the list of formats</source>
        <translation>يعود إلى قائمة الصيغ</translation>
    </message>
    <message>
        <source>Downloading: </source>
        <translation>جارٍ التنزيل: </translation>
    </message>
    <message>
        <source>Video Successfully Downloaded</source>
        <translation>نُزّل الفيديو بنجاح</translation>
    </message>
    <message>
        <source>Download progress</source>
        <translation>تقدّم التنزيل</translation>
    </message>
    <message>
        <source>How much of the video has been downloaded</source>
        <translation>مقدار ما نُزّل من الفيديو</translation>
    </message>
    <message>
        <source>Starts again with the address of another video</source>
        <translation>يبدأ من جديد برابط فيديو آخر</translation>
    </message>
    <message>
        <source>Start Over</source>
        <translation>البدء من جديد</translation>
    </message>
    <message>
        <source>Opens the folder with the downloaded video</source>
        <translation>يفتح المجلد الذي يحوي الفيديو المنزَّل</translation>
    </message>
    <message>
        <source>Open Folder with File</source>
        <translation>فتح مجلد الملف</translation>
    </message>
    <message>
        <source>Stops the download</source>
        <translation>يوقف التنزيل</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>إلغاء</translation>
    </message>
    <message>
        <source>Please wait</source>
        <translation>يُرجى الانتظار</translation>
    </message>
    <message>
        <source>Shown while the program is busy</source>
        <translation>يظهر أثناء انشغال البرنامج</translation>
    </message>
    <message>
        <source>| %1 sec.</source>
        <translation>| %1 ث</translation>
    </message>
    <message>
        <source>Cannot request metadata</source>
        <translation>تعذّر جلب البيانات الوصفية</translation>
    </message>
    <message>
        <source>crash exit on metadata request</source>
        <translation>توقّف مفاجئ أثناء طلب البيانات الوصفية</translation>
    </message>
    <message>
        <source>crash exit on formats request</source>
        <translation>توقّف مفاجئ أثناء طلب الصيغ</translation>
    </message>
    <message>
        <source>crash exit at downloading process</source>
        <translation>توقّف مفاجئ أثناء التنزيل</translation>
    </message>
    <message>
        <source>format count error</source>
        <translation>خطأ في عدد الصيغ</translation>
    </message>
    <message>
        <source>cannot start the downloader tool</source>
        <translation>تعذّر تشغيل أداة التنزيل</translation>
    </message>
    <message>
        <source>indefinite</source>
        <translation>خطأ غير محدد</translation>
    </message>
    <message>
        <source>WARNING</source>
        <translation>تحذير</translation>
    </message>
    <message>
        <source>WARNING: You must provide at least some valid YouTube URL to proceed</source>
        <translation>تحذير: يجب إدخال رابط YouTube صالح للمتابعة</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>العنوان</translation>
    </message>
    <message>
        <source>&lt;h3&gt;ERROR:&lt;/h3&gt;%1&lt;hr&gt;&lt;i&gt;Code: #0x%2&lt;/i&gt;</source>
        <extracomment>%1 is the kind of failure, %2 its code in hexadecimal.</extracomment>
        <translation>&lt;h3&gt;خطأ:&lt;/h3&gt;%1&lt;hr&gt;الرمز: &lt;i&gt;#0x%2&lt;/i&gt;</translation>
    </message>
    <message>
        <source>ERROR</source>
        <translation>خطأ</translation>
    </message>
    <message>
        <source>Unable to update. Please contact support</source>
        <translation>تعذّر التحديث. يُرجى التواصل مع الدعم الفني</translation>
    </message>
    <message>
        <source>Success</source>
        <translation>اكتمل التحديث</translation>
    </message>
    <message>
        <source>KestrelDownloader was successfully updated</source>
        <translation>حُدّث KestrelDownloader بنجاح</translation>
    </message>
    <message>
        <source>Manually Update Software</source>
        <translation>تحديث البرنامج يدويًا</translation>
    </message>
    <message>
        <source>Logging enabled</source>
        <translation>تسجيل الأحداث مفعّل</translation>
    </message>
    <message>
        <source>Change Scale Size</source>
        <translation>تغيير حجم العرض</translation>
    </message>
    <message>
        <source>%1%</source>
        <extracomment>A display scale in percent, as 130%.</extracomment>
        <translation>%1٪</translation>
    </message>
    <message>
        <source>Show UUID</source>
        <translation>إظهار UUID</translation>
    </message>
    <message>
        <source>About</source>
        <translation>حول</translation>
    </message>
    <message>
        <source>%1 version: %2</source>
        <translation>%1، الإصدار %2</translation>
    </message>
</context>
<context>
    <name>QGuiApplication</name>
    <message>
        <source>QT_LAYOUT_DIRECTION</source>
        <translation>RTL</translation>
    </message>
</context>
<context>
    <name>ReleaseFeed</name>
    <message>
        <source>&quot;releaseNumber&quot; is missing or not a number</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>الحقل &quot;releaseNumber&quot; مفقود أو ليس رقمًا</translation>
    </message>
    <message>
        <source>&quot;releaseNumber&quot; is not a positive whole number</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>الحقل &quot;releaseNumber&quot; ليس عددًا صحيحًا موجبًا</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is missing or not a text</source>
        <extracomment>%1 is a key of the release feed file, as &quot;version&quot;; it stays as it is.</extracomment>
        <translation>الحقل &quot;%1&quot; مفقود أو ليس نصًا</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot;: %2</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;), %2 what is wrong with its entry.</extracomment>
        <translation>مثبّت &quot;%1&quot;: %2</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot;: &quot;sha256&quot; is not 64 hexadecimal digits</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;); &quot;sha256&quot; is a key of that file and stays as it is.</extracomment>
        <translation>مثبّت &quot;%1&quot;: الحقل &quot;sha256&quot; ليس 64 رقمًا ست عشريًا</translation>
    </message>
    <message>
        <source>not valid JSON (%1 at offset %2)</source>
        <extracomment>%1 is the JSON reader&apos;s own message, %2 the position in the file where it stopped.</extracomment>
        <translation>ليس JSON صالحًا (%1 عند الموضع %2)</translation>
    </message>
    <message>
        <source>the document is not a JSON object</source>
        <translation>المستند ليس كائن JSON</translation>
    </message>
    <message>
        <source>&quot;version&quot; is too long</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>الحقل &quot;version&quot; طويل جدًا</translation>
    </message>
    <message>
        <source>&quot;buildDate&quot; is not of the form NN.NNNN</source>
        <extracomment>&quot;buildDate&quot; is a key of the release feed file and stays as it is; NN.NNNN shows the form of its value (two digits, a dot, four digits).</extracomment>
        <translation>الحقل &quot;buildDate&quot; ليس بالصيغة NN.NNNN</translation>
    </message>
    <message>
        <source>&quot;installers&quot; is missing or not an object</source>
        <extracomment>The word in quotes is a key of the release feed file and stays as it is.</extracomment>
        <translation>الحقل &quot;installers&quot; مفقود أو ليس كائنًا</translation>
    </message>
    <message>
        <source>installer for &quot;%1&quot; is not an object</source>
        <extracomment>%1 is the system&apos;s key in the release feed file (&quot;linux&quot;, &quot;windows&quot;).</extracomment>
        <translation>مدخل مثبّت &quot;%1&quot; ليس كائنًا</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a usable address</source>
        <extracomment>%1 is a web address. Shown inside &quot;The update address %1.&quot; and similar messages.</extracomment>
        <translation>&quot;%1&quot; ليس عنوانًا صالحًا للاستخدام</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was refused: only secure https addresses are accepted</source>
        <extracomment>%1 is a web address. Shown inside &quot;The update address %1.&quot; and similar messages.</extracomment>
        <translation>&quot;%1&quot; مرفوض: لا تُقبل إلا عناوين https الآمنة</translation>
    </message>
</context>
<context>
    <name>SysInfoPlugin</name>
    <message>
        <source> (build %1)</source>
        <translation> (البناء %1)</translation>
    </message>
    <message>
        <source>Operating system: %1</source>
        <translation>نظام التشغيل: %1</translation>
    </message>
    <message>
        <source>Kernel: %1 %2</source>
        <translation>النواة: %1 %2</translation>
    </message>
    <message>
        <source>CPU architecture: %1</source>
        <translation>معمارية المعالج: %1</translation>
    </message>
    <message>
        <source>Qt version: %1</source>
        <translation>إصدار Qt: %1</translation>
    </message>
</context>
<context>
    <name>UpdaterPlugin</name>
    <message>
        <source>The update address %1.</source>
        <translation>عنوان التحديث %1.</translation>
    </message>
    <message>
        <source>The update server redirected to an address that is not allowed: %1.</source>
        <translation>أعاد خادم التحديثات التوجيه إلى عنوان غير مسموح به: %1.</translation>
    </message>
    <message>
        <source>The release information from the update server is too large to be a release feed.</source>
        <translation>معلومات الإصدارات الواردة من خادم التحديثات أكبر من أن تكون قائمة إصدارات.</translation>
    </message>
    <message>
        <source>Could not get the release information: the update server answered HTTP %1 %2.</source>
        <translation>تعذّر جلب معلومات الإصدارات: ردّ خادم التحديثات بـ HTTP %1 %2.</translation>
    </message>
    <message>
        <source>The update server did not answer within %1 seconds.</source>
        <translation>لم يستجب خادم التحديثات خلال %1 ثانية.</translation>
    </message>
    <message>
        <source>Could not reach the update server: %1</source>
        <translation>تعذّر الوصول إلى خادم التحديثات: %1</translation>
    </message>
    <message>
        <source>The release information from the update server is not readable: %1.</source>
        <translation>تعذّرت قراءة معلومات الإصدارات من خادم التحديثات: %1.</translation>
    </message>
    <message>
        <source>You have the latest version of %1.

The newest release on the update server is %2 (build %3).</source>
        <translation>لديك أحدث إصدار من %1.

أحدث إصدار على خادم التحديثات هو %2 (البناء %3).</translation>
    </message>
    <message>
        <source>Version %1 of %2 is available, but the update server offers no installer for this system.</source>
        <translation>الإصدار %1 من %2 متوفر، لكن خادم التحديثات لا يقدّم مثبّتًا لهذا النظام.</translation>
    </message>
    <message>
        <source>Version %1 (build %2) of %3 is available.

Do you want to download and install it now?</source>
        <translation>الإصدار %1 (البناء %2) من %3 متوفر.

هل تريد تنزيله وتثبيته الآن؟</translation>
    </message>
    <message>
        <source>Downloading %1 %2…
%3 of %4</source>
        <translation>جارٍ تنزيل %1 %2…
%3 من %4</translation>
    </message>
    <message>
        <source>Downloading %1 %2…
%3</source>
        <translation>جارٍ تنزيل %1 %2…
%3</translation>
    </message>
    <message>
        <source>Version %1 of %2 is being installed.

Please restart %2 once its installer has finished.</source>
        <translation>جارٍ تثبيت الإصدار %1 من %2.

يُرجى إعادة تشغيل %2 بعد انتهاء المثبّت.</translation>
    </message>
    <message>
        <source>Software Update</source>
        <translation>تحديث البرنامج</translation>
    </message>
    <message>
        <source>Downloading %1 %2…</source>
        <translation>جارٍ تنزيل %1 %2…</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>إلغاء</translation>
    </message>
    <message>
        <source>The signature of the release information is too large to be a signature.</source>
        <translation>توقيع معلومات الإصدارات أكبر من أن يكون توقيعًا.</translation>
    </message>
    <message>
        <source>The release information from the update server was refused: it is not signed (its signature %1 could not be fetched: HTTP %2 %3).</source>
        <translation>رُفضت معلومات الإصدارات الواردة من خادم التحديثات: إنها غير موقّعة (تعذّر جلب توقيعها %1: HTTP %2 %3).</translation>
    </message>
    <message>
        <source>The release information from the update server was refused: %1.</source>
        <translation>رُفضت معلومات الإصدارات الواردة من خادم التحديثات: %1.</translation>
    </message>
    <message>
        <source>The installer cannot be downloaded: %1.</source>
        <translation>لا يمكن تنزيل المثبّت: %1.</translation>
    </message>
    <message>
        <source>The downloaded installer could not be read again before its start and was deleted.</source>
        <translation>تعذّرت قراءة المثبّت الذي نُزّل مرة أخرى قبل تشغيله، وقد حُذف.</translation>
    </message>
    <message>
        <source>The downloaded installer was changed after its check and was deleted; it was not started.</source>
        <translation>تغيّر المثبّت الذي نُزّل بعد التحقق منه فحُذف، ولم يُشغَّل.</translation>
    </message>
    <message>
        <source>The installer was not started: %1.</source>
        <translation>لم يُشغَّل المثبّت: %1.</translation>
    </message>
    <message>
        <source>The installer &quot;%1&quot; could not be started and was deleted.</source>
        <translation>تعذّر تشغيل المثبّت &quot;%1&quot; وقد حُذف.</translation>
    </message>
</context>
</TS>
