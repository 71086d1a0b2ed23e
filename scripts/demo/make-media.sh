#!/usr/bin/env bash
# Makes the short media files the offline sample video service serves, with
# ffmpeg's generated sources (a test pattern and a sine tone), into FOLDER.
#
#   make-media.sh FOLDER
#
# Files that already exist are kept, so a cache folder is filled once. Each
# file is written under a temporary name and renamed when complete, so an
# interrupted run never leaves a half-made file that a later run would keep.
#
# The video is encoded at a constant bit rate: a test pattern compresses to
# almost nothing otherwise, and the downloads should last long enough for
# the progress bar to move through several steps.
#
# FFMPEG names the ffmpeg to use (default: ffmpeg on PATH).
set -euo pipefail

if [ $# -ne 1 ]; then
    echo "usage: $0 FOLDER" >&2
    exit 2
fi

folder=$1
ffmpeg=${FFMPEG:-ffmpeg}
# Every file lasts this long; make-info.py reads the real length back with
# ffprobe, so changing it here is enough.
seconds=8

if ! command -v "$ffmpeg" >/dev/null 2>&1; then
    echo "make-media.sh: ffmpeg not found ($ffmpeg); install the Debian package ffmpeg" >&2
    exit 1
fi

mkdir -p "$folder"

# make_file NAME ffmpeg-arguments...: runs ffmpeg into NAME unless it exists.
make_file() {
    local name=$1
    shift
    local target="$folder/$name"
    if [ -s "$target" ]; then
        return 0
    fi
    # The extension stays last so that ffmpeg still picks the container.
    local partial="$folder/.partial-$$-$name"
    rm -f "$partial"
    if ! "$ffmpeg" -nostdin -hide_banner -loglevel error -y "$@" "$partial"; then
        rm -f "$partial"
        echo "make-media.sh: ffmpeg failed to make $name" >&2
        return 1
    fi
    mv -f "$partial" "$target"
    echo "made $target ($(stat -c %s "$target") bytes)"
}

# cbr KBITS: x264 settings for a constant bit rate, with filler data so that
# even a still picture fills it.
cbr() {
    local rate=$1
    echo -c:v libx264 -preset ultrafast -pix_fmt yuv420p -g 50 \
        -b:v "${rate}k" -minrate "${rate}k" -maxrate "${rate}k" -bufsize "$((rate / 2))k" \
        -x264-params nal-hrd=cbr:force-cfr=1
}

pattern() {
    echo -f lavfi -i "testsrc=size=$1:rate=25:duration=$seconds"
}

tone() {
    echo -f lavfi -i "sine=frequency=$1:sample_rate=44100:duration=$seconds"
}

# Video only, like the separate video formats of the real service.
# shellcheck disable=SC2046  # the helpers print argument lists on purpose
make_file video-1280x720.mp4 $(pattern 1280x720) $(cbr 4000) -an -movflags +faststart
# shellcheck disable=SC2046
make_file video-640x360.mp4 $(pattern 640x360) $(cbr 700) -an -movflags +faststart
# Audio only.
# shellcheck disable=SC2046
make_file audio.m4a $(tone 440) -ac 2 -c:a aac -b:a 128k -vn -movflags +faststart
# A small file with both, like the service's single-file formats.
# shellcheck disable=SC2046
make_file progressive-640x360.mp4 $(pattern 640x360) $(tone 660) $(cbr 900) -ac 2 -c:a aac -b:a 96k \
    -shortest -movflags +faststart
