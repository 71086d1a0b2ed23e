#!/bin/bash
# Cross-builds, from Debian's own source packages, the Windows pieces that Debian does not ship as Windows files:
#   ffmpeg.exe  (5.1, static, only what merging a video and an audio stream into MP4 / Matroska needs)
#   gpgv.exe    (GnuPG 2.2 signature verifier, static, 64-bit; Debian's recipe of its gpgv-win32 package)
#   libarchive  (3.6, static library and headers, zip and tar reading; Debian's security patches applied)
# and installs them into PREFIX (bin/, lib/, include/). About 6 minutes on two cores; build.sh uses a packed copy
# of the result instead when one is at hand.
# Usage: build-deps-mingw.sh PREFIX [WORKDIR]   (default WORKDIR /tmp/windows-deps-work)
set -euo pipefail
prefix=$1
work=${2:-/tmp/windows-deps-work}
export DEBIAN_FRONTEND=noninteractive
as_root=()
if [ "$(id -u)" -ne 0 ]; then
    as_root=(sudo)
fi
if ! grep -rqs '^Types:.*deb-src' /etc/apt/sources.list.d/ && ! grep -qs '^deb-src' /etc/apt/sources.list; then
    sed -e 's/^Types: deb$/Types: deb-src/' /etc/apt/sources.list.d/debian.sources \
        | "${as_root[@]}" tee /etc/apt/sources.list.d/debian-src.sources >/dev/null
fi
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" apt-get install -y -qq dpkg-dev g++-mingw-w64-x86-64-posix mingw-w64-tools nasm autoconf automake libtool make \
    libz-mingw-w64-dev libgcrypt-mingw-w64-dev libgpg-error-mingw-w64-dev libassuan-mingw-w64-dev \
    libksba-mingw-w64-dev libnpth-mingw-w64-dev >/dev/null
mkdir -p "$work/src" "$prefix/bin" && cd "$work/src"
for package in ffmpeg gnupg2 libarchive; do
    ls -d "$package"-*/ >/dev/null 2>&1 || apt-get source -qq "$package" >/dev/null
done
source_of() { ls -d "$work/src/$1"-*/ | head -1; }
cross=x86_64-w64-mingw32

# ffmpeg: demuxers, parsers and decoders enough to read the streams' parameters, muxers for the merged file,
# stream copy only (no encoders), no network, no external libraries.
mkdir -p "$work/build-ffmpeg" && cd "$work/build-ffmpeg"
"$(source_of ffmpeg)/configure" --prefix="$work/ffmpeg" --arch=x86_64 --target-os=mingw32 \
    --cross-prefix=$cross- --enable-cross-compile --cc=$cross-gcc-posix --cxx=$cross-g++-posix \
    --disable-everything --disable-autodetect --disable-doc --disable-debug --disable-network \
    --disable-ffplay --disable-ffprobe --enable-ffmpeg --disable-avdevice --disable-swscale --disable-postproc \
    --enable-static --disable-shared --extra-ldflags=-static \
    --enable-protocol=file,pipe \
    --enable-demuxer=mov,matroska,aac,mp3,ogg,flv,mpegts,hls \
    --enable-muxer=mp4,ipod,mov,matroska,webm,mp3,ogg,adts,opus \
    --enable-parser=h264,hevc,vp8,vp9,av1,aac,opus,vorbis,mpegaudio \
    --enable-bsf=aac_adtstoasc,h264_mp4toannexb,hevc_mp4toannexb,vp9_superframe,extract_extradata,av1_metadata \
    --enable-decoder=h264,hevc,vp8,vp9,aac,opus,vorbis,mp3 \
    --enable-filter=aresample,anull,null,copy >/dev/null
make -j"$(nproc)" >/dev/null
$cross-strip -o "$prefix/bin/ffmpeg.exe" ffmpeg.exe

# gpgv: the same configuration as Debian's gpgv-win32 package, for x86-64.
mkdir -p "$work/build-gpgv" && cd "$work/build-gpgv"
export LDFLAGS="-Xlinker --no-insert-timestamp -static" CFLAGS="-g -Os" CPPFLAGS=
"$(source_of gnupg2)/configure" \
    $(for f in gpgtar bzip2 gpgsm scdaemon dirmngr doc tofu exec ldap gnutls sqlite libdns; do echo --disable-$f; done) \
    $(for l in libgpg-error libgcrypt libassuan ksba npth; do echo --with-$l-prefix=/usr/$cross; done) \
    --enable-gpg2-is-gpg --with-zlib=/usr/$cross --prefix=/usr/$cross --host $cross >/dev/null
for target in common:libcommon.a common:libgpgrl.a common:libsimple-pwquery.a kbx:libkeybox.a regexp:libregexp.a; do
    make -C "${target%%:*}" "${target#*:}" >/dev/null
done
# The static libgpg-error needs Winsock after it on the link line.
make -C g10 gpgv.exe LIBS=-lws2_32 >/dev/null
$cross-strip -o "$prefix/bin/gpgv.exe" g10/gpgv.exe
unset LDFLAGS CFLAGS CPPFLAGS

# libarchive: Debian's patches touch the autotools inputs, so regenerate them first.
src=$(source_of libarchive)
(cd "$src" && autoreconf -fi >/dev/null 2>&1)
mkdir -p "$work/build-libarchive" && cd "$work/build-libarchive"
CC=$cross-gcc-posix "$src/configure" --host=$cross --prefix="$prefix" --enable-static --disable-shared \
    --disable-bsdtar --disable-bsdcpio --disable-bsdcat --disable-bsdunzip --without-openssl --without-nettle \
    --without-xml2 --without-expat --without-lzma --without-lz4 --without-zstd --without-bz2lib --without-iconv \
    --without-libb2 --disable-acl --disable-xattr >/dev/null
make -j"$(nproc)" >/dev/null
make install >/dev/null
rm -rf "$prefix/share" "$prefix/lib/libarchive.la"
