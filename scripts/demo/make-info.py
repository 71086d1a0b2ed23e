#!/usr/bin/env python3
"""Writes the info files of the offline sample videos: what the downloader
tool would have learnt about each video from the service, with every format
address on the local sample service, so that the tool, given one of these
files with --load-info-json, lists formats, prints title and duration and
downloads without any network.

    make-info.py --media FOLDER --port PORT --out FOLDER

FOLDER of --media holds the files make-media.sh made; their sizes and
lengths go into the info files, so the listed sizes are the real ones.
The files are named ID.info.json; default.info.json is the sample the tool
shim uses for any identifier it does not know.

The info files carry no webpage_url on purpose: with one, a failed download
makes the tool go back to the real service to extract the video again.
"""

import argparse
import json
import os
import subprocess
import sys

EXTRACTOR = {"extractor": "youtube", "extractor_key": "Youtube"}

# The default sample: a plain title, exact sizes.
DEMO_ID = "Kestr3lDemo"
# A title with non-ASCII letters and every character Windows refuses in a
# file name, long enough to be cut by the application's name length limit.
UNICODE_ID = "Kestr3lUni0"
UNICODE_TITLE = 'Ünïcødé: "quotes" / slash? <tag>|pipe* – 日本語 and a long tail to trim'
# The video formats' addresses answer 404.
MISSING_ID = "Kestr3l404x"
# Sizes only estimated, from the service or from the bit rate, or unknown.
APPROX_ID = "Kestr3lAprx"
# A video that does not exist. The info file only points at an address of
# the sample service that answers 404, which the tool's generic extractor
# then reports as an error, printing nothing on standard output, the way it
# reports a video the service does not have. (An info file without formats
# would make the tool stop with a Python traceback instead, which only the
# info-file route does.)
UNKNOWN_ID = "unknown0000"


def probe(path, ffprobe):
    """Duration in seconds of a media file, by ffprobe."""
    result = subprocess.run(
        [ffprobe, "-v", "error", "-show_entries", "format=duration", "-of", "default=nw=1:nk=1", path],
        check=True, capture_output=True, text=True)
    return float(result.stdout.strip())


class Media:
    def __init__(self, folder, ffprobe):
        self.folder = folder
        self.ffprobe = ffprobe
        self.durations = {}

    def size(self, name):
        return os.path.getsize(os.path.join(self.folder, name))

    def duration(self, name):
        if name not in self.durations:
            self.durations[name] = probe(os.path.join(self.folder, name), self.ffprobe)
        return self.durations[name]

    def kbits(self, name):
        """Average bit rate in kbit/s, as the service reports it."""
        return round(self.size(name) * 8 / self.duration(name) / 1000, 3)


def formats(media, base, missing_video=False, sizes="exact"):
    """The sample formats in the order the service lists them: storyboard,
    audio, then video from small to large.

    sizes: "exact" gives every format its filesize; "approx" gives only
    filesize_approx to some and nothing to others, which makes the tool
    estimate or leave the size blank."""
    video_base = base.replace("/media/", "/missing/") if missing_video else base

    def sized(entry, name, how):
        if how == "exact":
            entry["filesize"] = media.size(name)
        elif how == "approx":
            entry["filesize_approx"] = media.size(name)
        elif how == "bitrate":
            # Only the bit rate is known: the tool estimates the size from it.
            entry["tbr"] = media.kbits(name)
        elif how == "none":
            entry.pop("tbr", None)
            entry.pop("vbr", None)
            entry.pop("abr", None)
        return entry

    def how(exact_or):
        return "exact" if sizes == "exact" else exact_or

    storyboard = {
        "format_id": "sb0", "format_note": "storyboard", "ext": "mhtml", "protocol": "mhtml",
        "acodec": "none", "vcodec": "none", "width": 160, "height": 90, "fps": 0.0,
        "rows": 5, "columns": 5, "url": f"{base}storyboard-M0.jpg",
        "fragments": [{"url": f"{base}storyboard-M0.jpg", "duration": media.duration("video-640x360.mp4")}],
    }
    audio = sized({
        "format_id": "140", "format_note": "medium", "url": f"{base}audio.m4a", "ext": "m4a",
        "protocol": "http", "vcodec": "none", "acodec": "mp4a.40.2", "container": "m4a_dash",
        "tbr": media.kbits("audio.m4a"), "abr": media.kbits("audio.m4a"), "asr": 44100, "audio_channels": 2,
    }, "audio.m4a", how("approx"))
    small_video = sized({
        "format_id": "134", "format_note": "360p", "url": f"{video_base}video-640x360.mp4", "ext": "mp4",
        "protocol": "http", "vcodec": "avc1.4d401e", "acodec": "none", "container": "mp4_dash",
        "width": 640, "height": 360, "fps": 25, "tbr": media.kbits("video-640x360.mp4"),
        "vbr": media.kbits("video-640x360.mp4"),
    }, "video-640x360.mp4", how("bitrate"))
    progressive = sized({
        "format_id": "18", "format_note": "360p", "url": f"{video_base}progressive-640x360.mp4", "ext": "mp4",
        "protocol": "http", "vcodec": "avc1.42001E", "acodec": "mp4a.40.2", "width": 640, "height": 360,
        "fps": 25, "tbr": media.kbits("progressive-640x360.mp4"), "asr": 44100, "audio_channels": 2, "abr": 96,
    }, "progressive-640x360.mp4", how("none"))
    large_video = sized({
        "format_id": "136", "format_note": "720p", "url": f"{video_base}video-1280x720.mp4", "ext": "mp4",
        "protocol": "http", "vcodec": "avc1.4d401f", "acodec": "none", "container": "mp4_dash",
        "width": 1280, "height": 720, "fps": 25, "tbr": media.kbits("video-1280x720.mp4"),
        "vbr": media.kbits("video-1280x720.mp4"),
    }, "video-1280x720.mp4", how("approx"))
    return [storyboard, audio, small_video, progressive, large_video]


def video(video_id, title, duration, format_list):
    info = {
        "id": video_id,
        "title": title,
        "fulltitle": title,
        "duration": duration,
        **EXTRACTOR,
        "uploader": "Kestrel Sample Channel",
        "channel": "Kestrel Sample Channel",
        "upload_date": "20240105",
        "live_status": "not_live",
        "availability": "public",
        "formats": format_list,
    }
    return info


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("--media", required=True, help="folder with the files make-media.sh made")
    parser.add_argument("--port", type=int, required=True, help="port of the sample service on 127.0.0.1")
    parser.add_argument("--out", required=True, help="folder that receives the info files")
    parser.add_argument("--ffprobe", default=os.environ.get("FFPROBE", "ffprobe"), help="ffprobe to measure lengths")
    options = parser.parse_args()

    media = Media(os.path.abspath(options.media), options.ffprobe)
    for name in ("video-1280x720.mp4", "video-640x360.mp4", "audio.m4a", "progressive-640x360.mp4"):
        if not os.path.isfile(os.path.join(media.folder, name)):
            sys.exit(f"make-info.py: {name} is missing in {media.folder}; run make-media.sh first")

    base = f"http://127.0.0.1:{options.port}/media/"
    length = round(media.duration("video-1280x720.mp4"))
    samples = {
        DEMO_ID: video(DEMO_ID, "Kestrel Demo Clip (720p)", length, formats(media, base)),
        UNICODE_ID: video(UNICODE_ID, UNICODE_TITLE, length, formats(media, base)),
        MISSING_ID: video(MISSING_ID, "Kestrel Missing Media", length, formats(media, base, missing_video=True)),
        APPROX_ID: video(APPROX_ID, "Kestrel Estimated Sizes", length, formats(media, base, sizes="approx")),
        UNKNOWN_ID: {"_type": "url", "id": UNKNOWN_ID, "ie_key": "Generic",
                     "url": f"http://127.0.0.1:{options.port}/unavailable/{UNKNOWN_ID}"},
    }

    os.makedirs(options.out, exist_ok=True)

    def write(name, info):
        path = os.path.join(options.out, name)
        with open(path + ".partial", "w", encoding="utf-8") as handle:
            json.dump(info, handle, ensure_ascii=False, indent=1)
            handle.write("\n")
        os.replace(path + ".partial", path)

    for video_id, info in samples.items():
        write(f"{video_id}.info.json", info)
    write("default.info.json", samples[DEMO_ID])
    print(f"wrote {len(samples) + 1} info files for port {options.port} to {os.path.abspath(options.out)}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
