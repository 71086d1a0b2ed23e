#!/usr/bin/env bash
# Installs the build into a scratch prefix, as "cmake --install" does for a
# user, and checks that the result is a complete, working application.
#
#   check_install.sh <build dir> <application folder relative to the prefix> <system ffmpeg>
#                    <desktop identifier> <version>
set -euo pipefail
source "$(dirname "$0")/common.sh"

[ $# -eq 5 ] || fail "usage: $0 <build dir> <application folder> <system ffmpeg> <desktop identifier> <version>"
build_dir=$1 appdir_rel=$2 system_ffmpeg=$3 app_id=$4 version=$5

scratch=$(mktemp -d "${TMPDIR:-/tmp}/kestrel-install-test.XXXXXX")
trap 'rm -rf "$scratch"' EXIT
# A prefix named usr, as on a system, so that AppStream's validator can read
# the tree above it as a system's.
prefix="$scratch/root/usr"

step "cmake --install $build_dir --prefix $prefix"
run_logged "$scratch/install.log" cmake --install "$build_dir" --prefix "$prefix"

check_layout "$prefix" "$appdir_rel" "$system_ffmpeg" "$build_dir" "$app_id" "$version"
check_version_run "$prefix/bin/$app_name" "$scratch"

echo "PASS: the installation in a scratch prefix is complete and starts"
