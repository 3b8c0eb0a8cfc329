#!/usr/bin/env bash
# Builds the extension with its tests and runs every test.
#
#   scripts/run-tests.sh [BUILD_DIR] [extra cmake configure arguments...]
#
# BUILD_DIR defaults to "build" (relative to the repository root). Whatever
# the tests need and the machine lacks is installed first: on Debian/Ubuntu
# with apt-get (as root, or through sudo), on macOS with Homebrew. The checks
# are cheap, so on a machine that has everything this costs no noticeable time.
#
# Written for bash 3.2 as well, the version macOS ships: no arrays that may be
# empty under `set -u`, no bash 4 builtins.
set -euo pipefail

# The repository root; parameter expansion rather than dirname, one process fewer.
case "${BASH_SOURCE[0]}" in
  */*) cd "${BASH_SOURCE[0]%/*}/.." ;;
  *) cd .. ;;
esac

build_dir=${1:-build}
if [ $# -gt 0 ]; then shift; fi

readonly min_cmake=3.20  # ctest --test-dir
readonly comma_locale=de_DE.UTF-8

say() { printf 'run-tests.sh: %s\n' "$*" >&2; }
die() { say "$*"; exit 1; }

# Runs a command as root: directly when root already, otherwise through sudo.
as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    "$@"
  elif command -v sudo >/dev/null 2>&1; then
    sudo "$@"
  else
    die "\"$*\" needs root: run this script as root, or install sudo"
  fi
}

have_cxx_compiler() {
  if [ -n "${CXX:-}" ]; then
    command -v "${CXX%% *}" >/dev/null 2>&1
  else
    command -v c++ >/dev/null 2>&1 || command -v g++ >/dev/null 2>&1 || command -v clang++ >/dev/null 2>&1
  fi
}

# True when `locale -a` lists the decimal-comma locale (it prints "de_DE.utf8").
have_comma_locale() {
  locale -a 2>/dev/null | grep -qiE '^de_DE\.utf-?8$'
}

install_debian() {
  local missing="" p
  command -v cmake >/dev/null 2>&1 || missing="$missing cmake"
  have_cxx_compiler || missing="$missing g++"
  # One dpkg-query for all packages (each call costs tens of milliseconds). A
  # package removed with its configuration kept is still known to dpkg, hence
  # the status field rather than dpkg's exit code.
  local status nl='
'
  # libxml2-utils brings xmllint, which checks the exported Work Units.
  status=$(dpkg-query -W -f='${Package} ${db:Status-Status}\n' libgtest-dev libgmock-dev locales libxml2-utils 2>/dev/null || true)
  for p in libgtest-dev libgmock-dev locales libxml2-utils; do
    case "$nl$status$nl" in
      *"$nl$p installed$nl"*) ;;
      *) missing="$missing $p" ;;
    esac
  done
  if [ -n "$missing" ]; then
    say "installing${missing}"
    as_root apt-get update -qq
    # shellcheck disable=SC2086  # the list splits into package names on purpose
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing >/dev/null
  fi
  if ! have_comma_locale; then
    say "generating the locale $comma_locale (the number formatting is tested under a decimal comma)"
    # Enable it in /etc/locale.gen so that later locale-gen runs keep it.
    if [ -f /etc/locale.gen ] && grep -qE "^# *$comma_locale UTF-8" /etc/locale.gen; then
      as_root sed -i -E "s/^# *($comma_locale UTF-8)/\\1/" /etc/locale.gen
    elif ! grep -qE "^$comma_locale UTF-8" /etc/locale.gen 2>/dev/null; then
      echo "$comma_locale UTF-8" | as_root tee -a /etc/locale.gen >/dev/null
    fi
    as_root locale-gen >/dev/null
    # Ubuntu's locale-gen takes the locale by name instead.
    have_comma_locale || as_root locale-gen "$comma_locale" >/dev/null
    have_comma_locale || die "could not generate the locale $comma_locale"
  fi
}

install_macos() {
  local missing="" prefix p
  command -v cmake >/dev/null 2>&1 || missing="$missing cmake"
  # Looking for the headers in Homebrew's two prefixes is much faster than asking brew.
  prefix=""
  for p in /opt/homebrew /usr/local; do
    [ -f "$p/include/gtest/gtest.h" ] && [ -f "$p/include/gmock/gmock.h" ] && prefix=$p
  done
  [ -n "$prefix" ] || missing="$missing googletest"
  have_cxx_compiler || die "no C++ compiler found: install the Xcode command line tools (xcode-select --install)"
  if [ -n "$missing" ]; then
    command -v brew >/dev/null 2>&1 || die "missing${missing}: install Homebrew (https://brew.sh) or these packages yourself"
    say "installing${missing} with Homebrew"
    # shellcheck disable=SC2086
    brew install $missing
  fi
  # macOS ships de_DE.UTF-8 and xmllint with the system.
}

case "$OSTYPE" in
  linux*)
    if command -v apt-get >/dev/null 2>&1 && command -v dpkg-query >/dev/null 2>&1; then
      install_debian
    else
      say "not a Debian/Ubuntu system: make sure CMake $min_cmake+, a C++17 compiler and GoogleTest are installed"
    fi
    ;;
  darwin*) install_macos ;;
esac

# An older CMake stops at the project's cmake_minimum_required with its own message.
command -v cmake >/dev/null 2>&1 || die "cmake not found: install CMake $min_cmake or newer"

jobs=$(getconf _NPROCESSORS_ONLN 2>/dev/null || sysctl -n hw.ncpu 2>/dev/null || echo 2)

cmake -S . -B "$build_dir" ${1+"$@"}
cmake --build "$build_dir" --parallel "$jobs"
ctest --test-dir "$build_dir" --output-on-failure
