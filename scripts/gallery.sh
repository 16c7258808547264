#!/usr/bin/env bash
# Writes docs/gallery.md from the first sentence of each example, and the pictures in docs/images: of all
# examples, the scenes of examples/renderer, and the strips for docs/built-ins.md.
# usage: gallery.sh         after a build of the release preset
#        gallery.sh --page  prints only the page
set -euo pipefail
cd "$(dirname "$0")/.."

# Prints the options and other shaders with which the example $1 is shown better than by default, on or around
# a sphere of plain plastic.
options_of() {
    case $1 in
        lettering | mandelbrot | raindrops | sticker) echo --square ;;
        waves) echo --square --light point:from=-3,1,-1 ;;
        terrain) echo examples/dented_flat.sl --param Km=0.5 ;;
        weathered) echo examples/rivets.sl --param Km=0.06 ;;
        fog_flat | groundfog | smoke | underwater) echo examples/checker_flat.sl ;;
        vignette) echo --param strength=1 examples/planet.sl ;;
        grading) echo --param saturation=0.3 examples/planet.sl ;;
        exposure_flat | filmgrain | posterize) echo examples/planet.sl ;;
    esac
}

kinds=(surface displacement light volume imager)

is_of_kind() {
    grep -q "^$2 " "$1"
}

# Prints the first sentence of the first comment in the example $1. A line of options may precede it.
first_sentence() {
    sed -n '/^\/\*/,/\*\//p' "$1" | tr '\n' ' ' |
        sed -E 's#^/\*##; s#\*/.*##; s#  ?\* ?# #g; s# +# #g; s#^ ##; s#([.]) .*#\1#; s# $##'
}

# Prints a table of the renderer's scenes: pictures, links, and the comment at the start of each scene.
print_scenes() {
    local row scene name
    for row in '![@](images/renderer-@.png)' --- '[`@`](../examples/renderer/scenes/@.txt)' note; do
        for scene in examples/renderer/scenes/*.txt; do
            name=$(basename "$scene" .txt)
            [ "$row" != note ] || name=$(sed -n '1s/^# //p' "$scene")
            printf '| %s ' "$(sed "s|@|$name|g; s|^note$|$name|" <<<"$row")"
        done
        echo '|'
    done
}

print_page() {
    local kind source name
    cat <<'PAGE'
# Gallery

This page shows every example, as `sqxshade` renders it: surfaces on a sphere, displacements, lights
and volumes on and around plain plastic or a checkerboard, imagers over a finished picture.
`scripts/gallery.sh` makes the pictures and this page from the sources in `examples/`.

## Scenes

The [small renderer](../examples/renderer/README.md) that embeds the host library makes these pictures.

PAGE
    print_scenes
    for kind in "${kinds[@]}"; do
        printf '\n## %ss\n\n| | | |\n|---|---|---|\n' "${kind^}"
        for source in examples/*.sl; do
            name=$(basename "$source" .sl)
            ! is_of_kind "$source" "$kind" ||
                echo "| ![$name](images/$name.png) | [\`$name\`](../$source) | $(first_sentence "$source") |"
        done
    done
}

make_pictures() {
    local source name options
    mkdir -p docs/images
    for source in examples/*.sl; do
        name=$(basename "$source" .sl)
        read -ra options <<<"$(options_of "$name")" || true
        build/release/bin/sqxshade --size 128x128 -I examples/include "$source" "${options[@]}" \
            -o "docs/images/$name.png"
    done
}

# Renders the strips for docs/built-ins.md. A strip is a row of tiles that are 112 pixels wide and high.
make_strips() {
    local source name tiles
    for source in examples/strips/*.sl; do
        name=$(basename "$source" .sl)
        tiles=$(sed -nE 's/^    STRIP\(([0-9]+)\);$/\1/p' "$source")
        build/release/bin/sqxshade --size "$((tiles * 112))x112" "$source" -o "docs/images/$name.png"
    done
}

# Renders the scenes. The renderer is built only if its libraries are installed; otherwise the pictures
# are kept.
make_scenes() {
    local folder scene map
    if [ ! -x build/release/bin/renderer ]; then
        echo "$0: examples/renderer is not built: its pictures stay as they are" >&2
        return
    fi
    folder=$(mktemp -d)
    build/release/bin/sqxmake -o "$folder" examples/renderer/shaders examples/ambientlight.sl
    for map in sky relief; do
        build/release/bin/sqxshade --size 1024x512 --samples 1 "$folder/$map.sqx" -o "$folder/$map.png"
    done
    for scene in examples/renderer/scenes/*.txt; do
        build/release/bin/renderer "$scene" "$folder" \
            "docs/images/renderer-$(basename "$scene" .txt).png"
    done
    rm -r "$folder"
}

if [ "${1-}" = --page ]; then
    print_page
else
    make_pictures
    make_strips
    make_scenes
    print_page >docs/gallery.md
fi
