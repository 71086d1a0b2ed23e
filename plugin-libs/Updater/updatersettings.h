#pragma once

#include <QString>
#include <QUrl>

// What the updater reads from the application's settings file at the start
// of every check, so a changed file takes effect without a restart.
struct UpdaterSettings
{
    // The published feed. The domain is a placeholder until the update
    // service has its real address; "Updater/FeedUrl" overrides it.
    static constexpr const char *defaultFeedUrl = "https://updates.kestrel-downloader.example/feed.json";
    // How long a transfer may go without receiving a byte before it is given up.
    static constexpr int defaultTimeoutMs = 30000;

    QUrl feedUrl;
    int timeoutMs = defaultTimeoutMs;
    // Set when a key held a value that could not be used; the default is used instead.
    QString problem;

    // The application's settings file: settings.ini in its per-user local data folder.
    static QString filePath();
    static UpdaterSettings load();
};
