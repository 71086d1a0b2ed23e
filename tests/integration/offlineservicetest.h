#pragma once

#include "downloader/kestreldownloader.h"
#include "downloader/videoinfo.h"
#include "formats/formattablemodel.h"

#include "modalcatcher.h"
#include "processprobe.h"
#include "windowdriver.h"

#include <QJsonObject>
#include <QObject>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

// The window end to end with the real tool: the built launcher as the data
// folder's kestreldl2, a real yt-dlp behind it and ffmpeg for merging, all
// offline. The yt-dlp is the system's, or the one KESTREL_TEST_YTDLP names:
// CTest runs each suite once with each (the "_currenttool" entries). The
// sample service of scripts/demo serves generated media on 127.0.0.1, and the
// demo's yt-dlp shim hands yt-dlp the sample info files instead of letting it
// extract anything from the network.
//
// The suites derive from this fixture: its slots check the tools, make the
// media and info files, run the service, and give each case a fresh window
// with its own driver; what the cases share is below.
class OfflineServiceTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

protected:
    // Every wait is bounded; these are generous for two busy cores.
    static constexpr int listingTimeoutMs = 30000;
    static constexpr int downloadTimeoutMs = 60000;

    // The sample identifiers of make-info.py.
    static QString demoId() { return QStringLiteral("Kestr3lDemo"); }
    static QString unicodeId() { return QStringLiteral("Kestr3lUni0"); }
    static QString missingId() { return QStringLiteral("Kestr3l404x"); }
    static QString approxId() { return QStringLiteral("Kestr3lAprx"); }
    static QString unknownId() { return QStringLiteral("unknown0000"); }
    static QString realTool();

    // The size as the tool prints it: two decimals in the largest binary
    // unit below the number (yt-dlp's format_bytes).
    static QString toolSizeText(double bytes);
    // The size the tool itself lists for one format of a sample video, without
    // its "~" or "≈" mark; empty when its row has none. Where the tool
    // estimates, its arithmetic differs between releases: the application is
    // to show whatever the tool at hand says.
    QString sizeTheToolLists(const QString &id, const QString &formatId) const;

    KestrelDownloader &driver() { return m_window->driver(); }
    ModalCatcher &boxes() { return *m_boxes; }
    QString serviceLog() const { return m_serviceLog; }
    int servicePort() const { return m_port; }

    bool startService(int port);
    void stopService();
    QJsonObject sampleInfo(const QString &id) const;
    // The processes of a tool run of this test: the launcher in the sandbox's
    // data folder, yt-dlp working on this test's files, and ffmpeg writing
    // into the sandbox's output folder.
    QList<ProcessProbe::UserProcess> toolProcesses() const;

    template <typename Widget>
    Widget *widget(const char *name) const { return m_window->find<Widget>(name); }
    QString currentPage() const { return m_window->currentPage(); }
    void enterAddress(const QString &text) { m_window->enterAddress(text); }
    // Enters address and waits for the format table on the formats page.
    bool reachFormats(const QString &address);
    int rowOfFormat(quint32 id) const;
    void pickRow(int row) { m_window->pickRow(row, FormatTableModel::ResolutionColumn); }
    QStringList outputFiles() const;
    QStringList streamsOf(const QString &file) const;

private:
    QTemporaryDir m_work;
    QString m_media;
    QString m_infoFolder;
    QString m_pidFile;
    QString m_portFile;
    QString m_serviceLog;
    int m_port = 0;
    qint64 m_servicePid = 0;
    std::unique_ptr<QProcess> m_service;
    VideoInfo m_info;
    std::unique_ptr<ModalCatcher> m_boxes;
    std::unique_ptr<WindowDriver> m_window;
};
