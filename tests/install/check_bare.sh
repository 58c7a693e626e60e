#!/usr/bin/env bash
# What a new user does first, on a Debian with nothing in it: debootstrap makes one in a folder, of the
# release and from the mirror that this machine's apt uses. As root.
# usage: check_bare.sh WORK [WAY...]     without a WAY: all but the last
#   install   a user with sudo, neither ninja nor make there: scripts/install, scripts/uninstall
#   make      root, with make alone: scripts/install PREFIX, scripts/uninstall PREFIX
#   package   scripts/package --test; its packages installed, used and removed
#   demo      scripts/demo
#   test      scripts/test release: only where it is named
set -euo pipefail
mkdir -p "$1"
work=$(cd "$1" && pwd)
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/lib/common.sh"
[ "$(id -u)" -eq 0 ] || die "debootstrap and chroot need root"
shift
ways=("$@")
[ "$#" -gt 0 ] || ways=(install make package demo)

sources() { # of this release alone, whatever else apt knows here
  # shellcheck disable=SC1091,SC2016
  apt-get indextargets --format '$(REPO_URI) $(CODENAME) $(COMPONENT)' 'Created-By: Packages' |
    awk -v release="$(. /etc/os-release && echo "$VERSION_CODENAME")" \
      'index($2, release) == 1 && $3 == "main"' | sort -u -k 2,2
}
inside() { # folder, command: run by bash at the root of that system, with a /proc of its own
  # shellcheck disable=SC2016
  unshare --mount --pid --fork --kill-child bash -c '
    mount -t proc proc "$1/proc" && mount -t devpts devpts "$1/dev/pts" &&
      mount --bind "$2" "$1/var/cache/apt/archives" &&
      exec env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin ${http_proxy:+"http_proxy=$http_proxy"} \
        ${https_proxy:+"https_proxy=$https_proxy"} chroot "$1" bash -euc "$3"' - "$1" "$work/archives" "$2"
}

base=$work/base
mkdir -p "$work/archives/partial"
if [ ! -e "$work/made" ]; then
  rm -rf "$base"
  read -r mirror release _ < <(sources)
  say "debootstrap $release"
  debootstrap --variant=minbase "$release" "$base" "$mirror" > "$work/debootstrap.log" ||
    { tail -n 5 "$work/debootstrap.log"; exit 1; }
  sources | sed 's/^/deb /' > "$base/etc/apt/sources.list"
  apt-config dump Acquire | grep -v '^Acquire::Changelogs' > "$base/etc/apt/apt.conf.d/90machine" || true
  echo "127.0.0.1 localhost $(uname -n)" > "$base/etc/hosts"
  inside "$base" "apt-get update -qq && apt-get install -y -qq sudo > /dev/null 2>&1
    useradd --create-home --shell /bin/bash user
    echo 'user ALL=(ALL) NOPASSWD: ALL' > /etc/sudoers.d/user"
  touch "$work/made"
fi

# What each way runs in the folder of the tree. The program is one of the manual, built as README says.
use='apt-get install -y -qq pkg-config > /dev/null 2>&1
  cc -o /tmp/program examples/manual/due_date.c $(pkg-config --cflags --libs campotipo)
  /tmp/program | grep -x "29/02/2024: 154.32"'
absent='absent() { for program in "$@"; do if command -v $program; then exit 1; fi; done; }'
files='find /usr/local ! -type d | sort'
declare -A commands=(
  [install]="$files > /before
    absent ninja make
    sudo -u user scripts/install
    campotipo --version && ls /usr/local/share/man/man1/campotipo.1 /usr/local/share/man/man3/DATAC_monta.3
    $use
    sudo -u user scripts/uninstall
    $files | diff /before -"
  [make]="apt-get install -y -qq --no-install-recommends g++ cmake make > /dev/null 2>&1
    scripts/install /opt/campotipo
    absent ninja
    export PKG_CONFIG_PATH=/opt/campotipo/lib/pkgconfig LD_LIBRARY_PATH=/opt/campotipo/lib
    /opt/campotipo/bin/campotipo --version
    $use
    scripts/uninstall /opt/campotipo
    [ ! -e /opt/campotipo ]"
  [package]="scripts/package --test
    apt-get install -y -qq \$(ls \$PWD/build/package/packages/*.deb | grep -v dbgsym) > /dev/null 2>&1
    campotipo --version
    $use
    apt-get purge -y -qq campotipo libcampotipo1 libcampotipo-support1 libcampotipo-dev \\
      libcampotipo-doc > /dev/null 2>&1
    absent campotipo
    [ -z \"\$(find /usr -name '*campotipo*' | tee /dev/stderr)\" ]"
  [demo]="scripts/demo"
  [test]="scripts/test release"
)

for way in "${ways[@]}"; do
  [ -n "${commands[$way]:-}" ] || die "no such way: $way"
  say "bare Debian: $way"
  system=$work/$way
  rm -rf "$system"
  cp -a "$base" "$system"
  mkdir "$system/home/user/tree"
  tree_files | tar -c --null -T - | tar -x -C "$system/home/user/tree"
  inside "$system" "chown -R user: /home/user && cd /home/user/tree
    $absent
    ${commands[$way]}"
  rm -rf "$system"
done
say "bare Debian: ${ways[*]} passed"
