#!/usr/bin/env bash
# Links a macOS module (bundle) with lld from objects zig compiled, adding the
# runtime archives zig links into its own output (compiler-rt, libc++abi,
# libc++) and zig's stub of libSystem. Linker options reach lld without the
# compiler driver's "-Xlinker" or "-Wl," wrapping.
#
#   zig-macos-link-module.sh <zig> <zig target> <ld64.lld> <arch> <minimum macOS> [options, objects, archives]
set -euo pipefail
zig=$1 target=$2 ld64=$3 arch=$4 minimum=$5
shift 5

# zig builds its runtime archives once, caches them, and names them when it
# links with ZIG_VERBOSE_LINK set; an empty program shows them.
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
echo 'int main() { return 0; }' >"$scratch/empty.cpp"
mapfile -t runtime < <(ZIG_VERBOSE_LINK=1 "$zig" c++ -target "$target" -o "$scratch/empty" "$scratch/empty.cpp" 2>&1 |
  tr ' ' '\n' | grep -E '/lib(compiler_rt|c\+\+abi|c\+\+)\.a$')
if ((${#runtime[@]} != 3)); then
  echo "zig named no runtime archives for $target" >&2
  exit 1
fi
system=$("$zig" env | sed -n 's/.*"lib_dir": "\(.*\)".*/\1/p')/libc/darwin/libSystem.${minimum%%.*}.tbd

args=()
for arg in "$@"; do
  if [[ $arg == -Xlinker ]]; then
    continue
  elif [[ $arg == -Wl,* ]]; then
    IFS=, read -ra parts <<<"${arg#-Wl,}"
    args+=("${parts[@]}")
  else
    args+=("$arg")
  fi
done
exec "$ld64" -arch "$arch" -bundle -platform_version macos "$minimum" 13.0 -dead_strip "${args[@]}" "${runtime[@]}" "$system"
