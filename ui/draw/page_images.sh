#!/bin/sh
# Makes the pictures that generated pages show: the parchment, folders and the button of the suggestions.
# Needs rsvg-convert (librsvg2-bin) and ImageMagick. The results are committed.
set -e
cd "$(dirname "$0")/.."

# Fibres and stains that tile without a seam: noise, blurred around the edges as on a torus.
convert -size 450x450 -seed 7 xc:gray50 +noise Gaussian -virtual-pixel tile -blur 0x14 -auto-level \
  -colorspace gray +level 44%,56% /tmp/parchment_stains.png
convert -size 450x450 -seed 11 xc:gray50 +noise Gaussian -virtual-pixel tile -motion-blur 0x5+20 -auto-level \
  -colorspace gray +level 46%,54% /tmp/parchment_fibres.png
convert -size 450x450 xc:'#FAF4ED' \
  /tmp/parchment_stains.png -compose softlight -composite \
  /tmp/parchment_fibres.png -compose softlight -composite \
  -quality 82 -strip bg450.jpg
rm -f /tmp/parchment_stains.png /tmp/parchment_fibres.png

for name in folder-off folder-on; do
  rsvg-convert skin/pages/$name.svg | convert - -background '#585858' -alpha remove $name.gif
done
for name in btnok_off btnok_over btnok_on; do
  rsvg-convert skin/pages/$name.svg | convert - -background '#FAF4ED' -alpha remove $name.gif
done
