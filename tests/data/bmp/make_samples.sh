#!/usr/bin/env bash
# Regenerates the BMP samples of this folder and their reference pixels (<name>.ppm, or
# <name>.pam when the image has alpha). ImageMagick writes the im_* files, Pillow the pil_*
# files, make_samples.py the hand_* files and every reference. Needs Debian's imagemagick and
# python3-pil; both are called by their full paths, since another `convert` or `python3` may
# come first on the PATH.
set -euo pipefail
cd "$(dirname "$0")"

magick=/usr/bin/convert
python=/usr/bin/python3

sources=$(mktemp -d)
trap 'rm -rf "$sources"' EXIT
rm -f ./*.bmp ./*.ppm ./*.pam

# Source pictures: plasma fractals with a fixed seed.
for size in 7x5 9x7 11x7 13x9 17x11 33x17; do
    "$magick" -size "$size" -seed 1 plasma: "$sources/plasma$size.ppm"
done
alpha=(-alpha set -channel A -fx 'i/w' +channel) # alpha rising from left to right

# ImageMagick: BMP writes the 124-byte header, BMP3 the 40-byte one, BMP2 the 12-byte one.
"$magick" "$sources/plasma13x9.ppm" BMP:im_v5_24.bmp
"$magick" "$sources/plasma7x5.ppm" BMP3:im_v3_24.bmp
"$magick" "$sources/plasma9x7.ppm" BMP2:im_core_24.bmp
"$magick" "$sources/plasma13x9.ppm" -colors 60 BMP2:im_core_8.bmp
"$magick" "$sources/plasma13x9.ppm" -colors 9 BMP2:im_core_4.bmp
"$magick" "$sources/plasma13x9.ppm" -monochrome BMP2:im_core_1.bmp
"$magick" "$sources/plasma33x17.ppm" -monochrome BMP:im_v4_1.bmp # 108-byte header
"$magick" "$sources/plasma17x11.ppm" -colors 12 BMP3:im_v3_4.bmp
"$magick" "$sources/plasma13x9.ppm" -colors 60 BMP:im_v5_8.bmp
"$magick" "$sources/plasma17x11.ppm" -colors 40 -compress RLE BMP3:im_v3_rle8.bmp
"$magick" "$sources/plasma13x9.ppm" -colors 60 -compress RLE BMP:im_v5_rle8.bmp
"$magick" "$sources/plasma13x9.ppm" "${alpha[@]}" BMP:im_v5_32a.bmp
"$magick" "$sources/plasma11x7.ppm" -define bmp:subtype=RGB565 BMP:im_v5_565.bmp
"$magick" "$sources/plasma11x7.ppm" -define bmp:subtype=RGB555 BMP:im_v5_555.bmp
# BITFIELDS announced behind a 40-byte header, but no masks written: answered as corrupt.
"$magick" "$sources/plasma7x5.ppm" -define bmp:subtype=RGB555 BMP3:im_v3_16_nomasks.bmp

"$python" make_samples.py "$sources"
