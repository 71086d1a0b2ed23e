#pragma once

#include <QString>

class VideoInfo;

// Start-up preparation of the per-user folders and the tool copies.

// Creates the data folder, records the running version in the settings of
// info, copies the tool programs into the data folder once and prepares the
// output folder.
void checkAndSetupFiles(VideoInfo &info);

// Creates the output folder under the download folder and moves installer
// files of this product that were left there aside.
void prepareOutputDir();

// The folder that receives downloaded videos, chosen by prepareOutputDir().
const QString &outputFolder();

// The per-user data folder that holds the tool copies; every tool run starts
// there.
QString dataFolder();
