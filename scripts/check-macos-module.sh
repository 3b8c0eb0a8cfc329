#!/usr/bin/env bash
# Checks a macOS module as REAPER on a Mac will load it:
#
#   scripts/check-macos-module.sh reaper_zolva.dylib MINIMUM_MACOS
#
# - universal, with exactly the arm64 and x86_64 slices;
# - each slice exports only _ReaperPluginEntry, needs no library beyond
#   /usr/lib/libSystem.B.dylib and /usr/lib/libc++.1.dylib, and is marked for
#   MINIMUM_MACOS as its oldest macOS (minos);
# - the arm64 slice is signed, since macOS on Apple silicon loads no unsigned
#   code (an ad hoc signature will do).
#
# Uses LLVM's lipo, otool and nm (Debian package llvm), or Apple's on a Mac.
set -euo pipefail

say() { printf 'check-macos-module.sh: %s\n' "$*" >&2; }
[ $# -eq 2 ] || { say "usage: scripts/check-macos-module.sh MODULE MINIMUM_MACOS"; exit 1; }
module=$1 minimum=$2
[ -f "$module" ] || { say "$module does not exist"; exit 1; }

tool() {
  local name
  for name in "llvm-$1" "llvm-$1-14" "$1"; do
    if command -v "$name" >/dev/null 2>&1; then echo "$name"; return; fi
  done
  say "neither llvm-$1 nor $1 is installed"
  exit 1
}
lipo=$(tool lipo)
otool=$(tool otool)
nm=$(tool nm)

failures=0
fail() { say "$module: $*"; failures=$((failures + 1)); }

archs=$("$lipo" -archs "$module" | tr ' ' '\n' | sort | xargs)
[ "$archs" = "arm64 x86_64" ] || fail "holds the slices \"$archs\", not exactly arm64 and x86_64"

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
for arch in arm64 x86_64; do
  slice=$scratch/$arch
  "$lipo" "$module" -thin "$arch" -output "$slice" 2>/dev/null || continue
  exports=$("$nm" -gU "$slice" | awk '{print $NF}')
  [ "$exports" = _ReaperPluginEntry ] ||
    fail "$arch exports $(wc -l <<<"$exports") symbols, not only _ReaperPluginEntry: $(head -n 5 <<<"$exports" | xargs) ..."
  # The libraries it loads, without a dylib's own name.
  own=$("$otool" -D "$slice" | tail -n +2)
  libraries=$("$otool" -L "$slice" | tail -n +2 | awk '{print $1}' | grep -vxF "${own:-/}" || true)
  unexpected=$(grep -vxE '/usr/lib/(libSystem\.B|libc\+\+\.1)\.dylib' <<<"$libraries" || true)
  [ -z "$unexpected" ] || fail "$arch needs libraries macOS does not ship: $(xargs <<<"$unexpected")"
  commands=$("$otool" -l "$slice")
  minos=$(awk '$1 == "minos" {print $2}' <<<"$commands" | xargs)
  [ "$minos" = "$minimum" ] || fail "$arch has minos \"$minos\", not $minimum"
  if [ "$arch" = arm64 ] && ! grep -q 'cmd LC_CODE_SIGNATURE' <<<"$commands"; then
    fail "arm64 is not signed"
  fi
  ((failures)) || say "$module: $arch exports only $exports, needs $(xargs <<<"$libraries"), minos $minos"
done
((failures == 0)) || exit 1
