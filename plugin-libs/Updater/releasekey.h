#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// The key that signs the release feed, and the gpgv that checks it. The
// public half of the application's release key is built into the plug-in;
// KESTREL_UPDATER_KEYRING can add one more key file (a test's throw-away
// key), never take the built-in one away.
namespace ReleaseKey {

// Names a key file whose keys are accepted beside the built-in one.
constexpr const char *addedKeysVariable = "KESTREL_UPDATER_KEYRING";

// The binary OpenPGP packets of an ASCII-armoured block ("-----BEGIN PGP
// ... -----" to "-----END"), the form gpgv reads; its header lines are
// skipped and its checksum line must match the body. Binary input (its first
// byte has the high bit set, as every OpenPGP packet's does) is returned as
// it is. Nothing for anything else.
std::optional<QByteArray> dearmor(const QByteArray &text);

// The built-in public key as binary packets.
QByteArray builtInKey();

struct Keyring
{
    QByteArray keys;   // the packets of every accepted key, one after another
    QString addedFile; // the file named by the variable, when it is set
    QString problem;   // why the added file could not be used; the built-in key still is
};

// The built-in key, followed by the keys of the added file when there is one.
Keyring keyring();

// gpgv by absolute path, never looked up on PATH: Debian's on Linux, the one
// installed beside the application on Windows.
QString gpgvPath();

} // namespace ReleaseKey
