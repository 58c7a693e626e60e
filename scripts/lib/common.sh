# What every script starts with: the root of the tree, and packages installed when they are missing.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
cd "$root"
: "${CAMPOTIPO_BUILD_ROOT:=$root/build}"

say() { printf '\n== %s\n' "$*"; }
die() {
  printf 'error: %s\n' "$*" >&2
  exit 2
}

# need PACKAGE...: installs those Debian packages that are not there yet.
need() {
  local missing=() package sudo=()
  for package in "$@"; do
    dpkg-query -W -f '${Status}' "$package" 2> /dev/null | grep -q 'install ok installed' ||
      missing+=("$package")
  done
  [ "${#missing[@]}" -gt 0 ] || return 0
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo > /dev/null || die "packages are missing and this is neither root nor sudo: ${missing[*]}"
    sudo=(sudo)
  fi
  say "installing ${missing[*]}"
  "${sudo[@]}" apt-get update -qq
  "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
    "${missing[@]}" > /dev/null
}

build_packages=(g++ cmake ninja-build)

# build FOLDER TARGET... -- OPTION...: configures build/FOLDER with the options and builds.
build() {
  local folder=$CAMPOTIPO_BUILD_ROOT/$1 targets=()
  shift
  while [ "$#" -gt 0 ] && [ "$1" != -- ]; do
    targets+=("$1")
    shift
  done
  [ "$#" -eq 0 ] || shift
  cmake -S "$root" -B "$folder" -G Ninja "$@" > /dev/null
  cmake --build "$folder" ${targets[@]:+--target "${targets[@]}"} -- --quiet
}
