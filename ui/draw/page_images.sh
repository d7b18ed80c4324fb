#!/bin/sh
# Makes the pictures that generated pages show: the parchment, folders, the button of the suggestions, and the
# pictures of reports and of lists of topics, which are the server's.
# Needs rsvg-convert (librsvg2-bin) and ImageMagick. The results are committed.
set -e
cd "$(dirname "$0")/.."

# Fibres and stains that tile without a seam: noise, blurred around the edges as on a torus.
convert -size 450x450 -seed 7 xc:gray50 +noise Gaussian -virtual-pixel tile -blur 0x14 -auto-level \
  -colorspace gray +level 40%,60% /tmp/parchment_stains.png
convert -size 450x450 -seed 11 xc:gray50 +noise Gaussian -virtual-pixel tile -motion-blur 0x5+20 -auto-level \
  -colorspace gray +level 43%,57% /tmp/parchment_fibres.png
convert -size 450x450 xc:'#FAF4ED' \
  /tmp/parchment_stains.png -compose overlay -composite \
  /tmp/parchment_fibres.png -compose overlay -composite \
  -quality 82 -strip bg450.jpg
rm -f /tmp/parchment_stains.png /tmp/parchment_fibres.png

for name in folder-off folder-on; do
  rsvg-convert skin/pages/$name.svg | convert - -background '#585858' -alpha remove $name.gif
done
for name in btnok_off btnok_over btnok_on; do
  rsvg-convert skin/pages/$name.svg | convert - -background '#FAF4ED' -alpha remove $name.gif
done

# With a transparent ground: soft edges go over into a colour between those of the pages.
cut_out() {
  convert "$1" \( +clone -alpha extract -threshold 40% \) \( -clone 0 -background '#FFFFE8' -alpha remove \) \
    -delete 0 -reverse -alpha off -compose CopyOpacity -composite "$2"
}
for name in ico_mrv_ext ico_mrv_hint ico_mrv_close ico_mrv_closeup ico_mrv_err mrv_icon_warning; do
  rsvg-convert skin/pages/$name.svg -o /tmp/$name.png
  cut_out /tmp/$name.png ../server/www/_images/$name.gif
  rm /tmp/$name.png
done
for frame in 1 2; do
  rsvg-convert skin/pages/ico_sys_break_point_flash_$frame.svg -o /tmp/flash.png
  cut_out /tmp/flash.png /tmp/flash_$frame.png
done
convert -dispose background -delay 60 /tmp/flash_1.png /tmp/flash_2.png -loop 0 ../server/www/_images/ico_sys_break_point_flash.gif
rm /tmp/flash.png /tmp/flash_1.png /tmp/flash_2.png

for name in icon_obj mrv_icon_check mrv_icon_finalset ico_bell ico_tree_0 ico_tree_1 ico_del tab; do
  rsvg-convert skin/pages/$name.svg | convert - -background '#585858' -alpha remove ../server/www/_images/$name.gif
done
rsvg-convert skin/pages/tab_line.svg | convert - -quality 95 -strip ../server/www/_images/tab_line.jpg
