#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# Renders the drawings to the XPM arrays in xpm/ and to the pictures of the
# manual, and the application icon also to the PNG files that are installed.
# Needs rsvg-convert and ImageMagick.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
data=$here/../../data/icons
manual=$here/../../docs/manual/img
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

# Writes the PNG file $1 as the XPM array $2 to standard output. XPM knows no
# half-transparent pixel, so a pixel is kept when at least half of it is drawn.
# Colours are written as numbers: their names differ between toolkits.
to_xpm() {
    convert "$1" -channel A -threshold 49% +channel \
        +dither -colors 32 -depth 8 txt:- |
        awk -v name="$2" '
        BEGIN { keys = "#abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789@%&*" }
        NR == 1 { split($5, head, ","); width = head[1]; next }
        match($0, /#[0-9A-Fa-f]+/) {
            rgba = tolower(substr($0, RSTART, RLENGTH))
            colour = substr(rgba, 8, 2) == "00" ? "None" : substr(rgba, 1, 7)
            if (!(colour in key)) {
                key[colour] = colour == "None" ? "." : substr(keys, ++used, 1)
                order[++colours] = colour
            }
            pixels = pixels key[colour]
        }
        END {
            print "/* XPM */"
            print "static const char* const " name "[] = {"
            printf "\"%d %d %d 1\"", width, length(pixels) / width, colours
            for (i = 1; i <= colours; ++i)
                printf ",\n\"%s c %s\"", key[order[i]], order[i]
            for (i = 1; i <= length(pixels); i += width)
                printf ",\n\"%s\"", substr(pixels, i, width)
            print "\n};"
        }'
}

render() { rsvg-convert -w "$2" -h "$2" "$1" -o "$3"; }

mkdir -p "$here/xpm" "$data/48x48" "$data/128x128" "$manual"

for drawing in "$here"/drawings/*.svg; do
    name=$(basename "$drawing" .svg)
    render "$drawing" 16 "$manual/$name.png"
    for size in 16 32; do
        png=$tmp/$name$size.png
        render "$drawing" "$size" "$png"
        to_xpm "$png" "$name${size}x${size}_xpm" >"$here/xpm/$name${size}x${size}.xpm"
        [[ $name == go* ]] || continue
        # The disabled twin: middle greys that recede on light and dark alike.
        convert "$png" -colorspace Gray -channel RGB +level 40%,78% +channel \
            -colorspace sRGB -type TrueColorAlpha "PNG32:$tmp/grey.png"
        to_xpm "$tmp/grey.png" "${name}_d${size}x${size}_xpm" \
            >"$here/xpm/${name}_d${size}x${size}.xpm"
    done
done

render "$data/scalable/quenda.svg" 32 "$tmp/quenda32.png"
render "$data/scalable/quenda.svg" 64 "$tmp/quenda64.png"
to_xpm "$tmp/quenda32.png" Quenda_image_data >"$here/xpm/quenda32x32.xpm"
to_xpm "$tmp/quenda64.png" Quenda64_image_data >"$here/xpm/quenda64x64.xpm"
render "$data/scalable/quenda.svg" 64 "$manual/quenda.png"
render "$data/scalable/quenda.svg" 48 "$data/48x48/quenda.png"
render "$data/scalable/quenda.svg" 128 "$data/128x128/quenda.png"
