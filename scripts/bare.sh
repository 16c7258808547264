#!/usr/bin/env bash
# Runs the two commands of the README on a Debian with only git installed: once as a new user would,
# then again without network. This shows whether the scripts forget to install a package. Then tests the
# Debian packages in a new system. Needs root, debootstrap, and `ip` of iproute2; uses the mirror of this
# machine's apt.
# usage: bare.sh           tests a clone of HEAD; takes as long as two runs of scripts/test.sh
#        bare.sh COMMAND   instead runs the command, with network, in the system that the last run left:
#                          after a failure that of the failed step, else that of the test of the packages
# environment: SLC_BARE_FOLDER  keeps the system, up to 3 GB, in this folder instead of build/bare.
#                               Its subfolders base (the system before a run) and archives (downloaded packages)
#                               are reused by the next run; remove them to start from scratch.
#              SLC_BARE_CCACHE  a folder of ccache for the builds; ccache is then also installed in the system.
set -euo pipefail
cd "$(dirname "$0")/.."
folder=$(realpath -m "${SLC_BARE_FOLDER:-build/bare}")
root=$folder/root
cache=${SLC_BARE_CCACHE:+$(realpath "$SLC_BARE_CCACHE")}

fail() {
    echo "$0: $*" >&2
    exit 1
}

# Prints the first mirror in apt's configuration that has the release $1.
mirror_of() {
    apt-get update --print-uris 2>/dev/null |
        sed -nE "s|^'([^']*)/dists/$1/InRelease' .*|\1|p" | head -n 1
}

# Copies what apt needs to reach the mirror: host names, proxies, passwords and certificates of this
# machine.
copy_network_settings() {
    local file
    for file in /etc/resolv.conf /etc/hosts /etc/apt/auth.conf /etc/apt/auth.conf.d \
        /etc/ssl/certs/ca-certificates.crt /usr/local/share/ca-certificates; do
        [ -e "$file" ] || continue
        mkdir -p "$1$(dirname "$file")"
        cp -rLT "$file" "$1$file"
    done
    apt-config dump | grep -E '^Acquire::(http|https|Check-|Retries)' >"$1/etc/apt/apt.conf.d/90machine" || true
}

make_base() {
    local release mirror
    release=$(sed -n 's/^VERSION_CODENAME=//p' /etc/os-release)
    mirror=$(mirror_of "$release")
    [ -n "$mirror" ] || fail "no mirror in the configuration of apt has '$release'"
    echo "Making a $release of $mirror in $folder/base"
    rm -rf "$folder/base.part"
    mkdir -p "$folder/archives"
    debootstrap --variant=minbase --include=git --cache-dir="$folder/archives" "$release" \
        "$folder/base.part" "$mirror" >"$folder/debootstrap.log" ||
        fail "debootstrap failed; see $folder/debootstrap.log"
    mv "$folder/base.part" "$folder/base"
}

# Runs the command $2... in /root/clone inside the system, with network only if $1 is `network`. The mounts
# exist only for this command. Of this machine's environment variables, only those of proxies are passed on,
# and with a cache LANG.
inside() {
    local isolation=()
    [ "$1" = network ] || isolation=(--net)
    unshare --mount "${isolation[@]}" bash -c '
        set -e
        [ "$1" = network ] || ip link set lo up
        root=$2 archives=$3 cache=$4
        shift 4
        mount --bind "$archives" "$root/var/cache/apt/archives"
        [ -z "$cache" ] || { mkdir -p "$root/root/.ccache"; mount --bind "$cache" "$root/root/.ccache"; }
        mount -t proc proc "$root/proc"
        mount --rbind /dev "$root/dev"
        exec env -i HOME=/root PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin \
            ${http_proxy:+"http_proxy=$http_proxy"} ${https_proxy:+"https_proxy=$https_proxy"} \
            ${no_proxy:+"no_proxy=$no_proxy"} \
            ${cache:+${LANG:+"LANG=$LANG"} CCACHE_DIR=/root/.ccache CCACHE_BASEDIR=/root CCACHE_NOHASHDIR=1} \
            chroot "$root" sh -c '\''cd /root/clone && exec "$@"'\'' sh "$@"
    ' bash "$1" "$root" "$folder/archives" "$cache" "${@:2}"
}

[ "$(id -u)" = 0 ] || fail "chroot needs root"
for tool in debootstrap unshare ip chroot; do
    command -v "$tool" >/dev/null || fail "$tool is not installed"
done
if [ $# -gt 0 ]; then
    [ -d "$root/root/clone" ] || fail "there is no system of an earlier run in $folder"
    inside network "$@"
    exit
fi
[ -d "$folder/base" ] || make_base
rm -rf --one-file-system "$root"
cp -a "$folder/base" "$root"
copy_network_settings "$root"
git clone -q --no-hardlinks . "$root/root/clone"
if [ -n "$cache" ]; then
    inside network sh -c 'apt-get update -qq && apt-get install -y -qq --no-install-recommends ccache'
fi
for connection in network alone; do
    inside "$connection" scripts/quickstart.sh
    # quickstart.sh suggests this command at its end, without a prefix.
    inside "$connection" cmake --install build/release --prefix /root/installed >/dev/null
    inside "$connection" scripts/test.sh
done
# Makes the packages, and tests them in a new system, which has no build tools.
inside network bash -c 'source scripts/prepare.sh && install_missing "$package_needs" && cmake build/release >/dev/null &&
    cd build/release && cpack -G DEB -B ../packages'
packages=$(mktemp -d)
cp "$root"/root/clone/build/packages/*.deb "$root/root/clone/tests/package/debian.sh" "$packages"
rm -rf --one-file-system "$root"
cp -a "$folder/base" "$root"
copy_network_settings "$root"
mkdir -p "$root/root/clone"
cp "$packages"/* "$root/root/clone"
inside network sh -c 'apt-get update -qq && ./debian.sh .'
rm -rf "$packages"
echo "Both commands pass on a bare Debian, with and without network, and so do the packages"
