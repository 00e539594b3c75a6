#!/usr/bin/env bash
# Draws the pictures Quillmere writes into scrapbooks: the type icons of the list, folder and
# content pages (src/website/icons/), the pictures of the two decorated content page skins
# (src/website/skins/) and the gallery's picture of an item without pictures
# (src/website/site/); and the program's own icon in the sizes a desktop asks for
# (src/ui/icons/; quillmere.svg there is the same drawing for scalable use). Needs ImageMagick 6
# and the DejaVu fonts (Debian: imagemagick, fonts-dejavu-core). The same tools give the same
# bytes, so running it again changes nothing.
#
#   scripts/make-pictures.sh            # writes every folder
set -euo pipefail

IM=/usr/bin/convert # the real ImageMagick, whatever else is first on the path
ROOT=$(cd "$(dirname "$0")/.." && pwd)
ICONS=$ROOT/src/website/icons
SKINS=$ROOT/src/website/skins
SITE=$ROOT/src/website/site
APP=$ROOT/src/ui/icons
mkdir -p "$ICONS" "$SKINS" "$SITE" "$APP"

# The colours of the pages: the navy, blue and pale blue of the kiosk skin, the teal of the
# list tables, and the greys of the logitech skin.
NAVY='#1F4E79' BLUE='#2E75B6' SKY='#9DC3E6' PALE='#DEEBF7' DEEP='#163A5C'
TEAL='#008080' MINT='#5FC8C0' CHARCOAL='#333333'
FONT=DejaVu-Sans-Bold

# Pictures are drawn at four times their size and scaled down, which smooths every edge.
SS=4
times() { awk -v f="$1" -v s=$SS 'BEGIN { printf "%g", f * s }'; }

# GIFs and JPEGs without dates or comments, so the bytes depend on the drawing alone.
gif() { "$IM" "$@" -strip +set date:create +set date:modify "GIF:$OUT"; }
jpg() { "$IM" "$@" -strip -sampling-factor 1x1 -quality 95 "JPG:$OUT"; }
png() { "$IM" "$@" -strip -define png:exclude-chunks=date,time "PNG:$OUT"; }

# The quill on a 100 by 100 grid, scaled by $1 and moved by $2,$3: a feather from the top
# right to a split nib at the bottom left, its shaft drawn through the vane in colour $5.
quill() {
    local s=$1 dx=$2 dy=$3 vane=$4 cut=$5
    echo "translate $dx,$dy scale $s,$s
          fill $vane stroke none
          path 'M 88,6 C 60,8 36,34 30,72 C 52,66 80,44 88,6 Z'
          stroke $cut stroke-width 1.6 fill none
          path 'M 86,9 Q 56,36 31,71'
          path 'M 52,30 L 44,30'  path 'M 40,48 L 33,49'
          stroke $vane stroke-width 3.2 stroke-linecap round
          line 33,69 22,84
          stroke none fill $vane
          path 'M 22,80 L 26,84 L 13,95 Z'"
}

# ---- the kiosk skin: navy title with the logo, a pale bar, a navy footer -----------------
OUT=$SKINS/logo.gif gif -size $((114 * SS))x$((116 * SS)) xc:"$NAVY" \
    -fill "$DEEP" -draw "roundrectangle $((8 * SS)),$((6 * SS)) $((105 * SS)),$((93 * SS)) $((14 * SS)),$((14 * SS))" \
    -fill none -stroke "$TEAL" -strokewidth $((2 * SS)) \
    -draw "roundrectangle $((8 * SS)),$((6 * SS)) $((105 * SS)),$((93 * SS)) $((14 * SS)),$((14 * SS))" \
    -stroke none -draw "$(quill "$(times 0.78)" $((17 * SS)) $((10 * SS)) white "$DEEP")" \
    -fill "$MINT" -draw "rectangle $((20 * SS)),$((86 * SS)) $((56 * SS)),$((87 * SS))" \
    -font $FONT -pointsize $((13 * SS)) -fill white -gravity south -annotate +0+$((5 * SS)) 'Quillmere' \
    -resize 114x116!

# The banner beside the logo: a gradient from blue into navy, ended by a teal line that the
# bar below continues.
OUT=$SKINS/topbg_right.gif gif -size 8x113 gradient:"$BLUE-$NAVY" \
    -size 8x3 xc:"$TEAL" -append
OUT=$SKINS/topbg.gif gif -size 8x1 xc:white -size 8x27 gradient:"$SKY-$PALE" -append
OUT=$SKINS/foot-bg.gif gif -size 8x2 xc:"$TEAL" -size 8x30 gradient:"$NAVY-$DEEP" -append
OUT=$SKINS/right-bg.gif gif -size 12x2 xc:"$TEAL" -size 12x30 gradient:"$NAVY-$DEEP" -append
# The footer's right end: the same band, its corners rounded into the white page.
OUT=$SKINS/right-1.gif gif -size $((12 * SS))x$((32 * SS)) xc:white \
    \( -size $((24 * SS))x$((2 * SS)) xc:"$TEAL" -size $((24 * SS))x$((30 * SS)) gradient:"$NAVY-$DEEP" -append \
       \( -size $((24 * SS))x$((32 * SS)) xc:black -fill white \
          -draw "roundrectangle 0,0 $((24 * SS - 1)),$((32 * SS - 1)) $((10 * SS)),$((10 * SS))" \) \
       -alpha off -compose copy_opacity -composite -crop $((12 * SS))x$((32 * SS))+$((12 * SS))+0 +repage \) \
    -compose over -composite -resize 12x32!

# ---- the logitech skin: a charcoal strip with the logo, a grey panel ---------------------
# The strip's rows, shared by its background and the picture beside the logo so they meet
# without a seam.
strip() { echo -size "$1"x50 gradient:'#3F3F3F-#2A2A2A' -size "$1"x2 xc:"$TEAL" -append; }
OUT=$SKINS/strip_bg5_333333.gif gif $(strip 8)
OUT=$SKINS/logo.jpg jpg $(strip 61) \( -size $((61 * SS))x$((52 * SS)) xc:none \
    -fill "$TEAL" -draw "roundrectangle $((9 * SS)),$((5 * SS)) $((52 * SS)),$((46 * SS)) $((8 * SS)),$((8 * SS))" \
    -draw "$(quill "$(times 0.40)" "$(times 10.5)" "$(times 5.5)" white "$TEAL")" \
    -resize 61x52! \) -composite
OUT=$SKINS/strip5_a_util.jpg jpg $(strip 240) \
    -font $FONT -pointsize 20 -fill white -annotate +6+26 'Quillmere' \
    -font DejaVu-Sans -pointsize 11 -fill "$MINT" -annotate +7+42 'scrapbooks, e-books and websites'
# The panel heading: a teal tab, then a light grey gradient that stays flat below the heading.
OUT=$SKINS/d5_a.gif gif -size 4x64 xc:"$TEAL" \( -size 4x32 gradient:'#F7F7F7-#E2E2E2' -size 4x32 xc:'#E2E2E2' -append \) +append
OUT=$SKINS/d5_b.gif gif -size 8x32 gradient:'#F7F7F7-#E2E2E2' -size 8x32 xc:'#E2E2E2' -append
OUT=$SKINS/grey_table_background_line.gif gif -size 8x1 xc:'#C8C8C8'
OUT=$SKINS/spacer.gif gif -size 1x1 xc:none

# ---- the type icons, 20 by 20 on the white page ------------------------------------------
S=$((20 * 8))
# Saved pages, notes, sites, files: a sheet with a folded corner and teal lines of text.
OUT="$ICONS/images-D(2007-0418-162822).jpg" jpg -size ${S}x${S} xc:white \
    -fill white -stroke "$BLUE" -strokewidth 9 \
    -draw "path 'M 28,8 L 102,8 L 134,40 L 134,152 L 28,152 Z'" \
    -fill "$PALE" -draw "path 'M 102,8 L 102,40 L 134,40 Z'" \
    -stroke "$TEAL" -strokewidth 10 -draw "line 50,70 112,70" -draw "line 50,96 112,96" \
    -draw "line 50,122 94,122" -resize 20x20!
# Bookmarks: a blue ribbon with a notched tail and a white ring.
OUT="$ICONS/images-D(2007-0426-225435).jpg" jpg -size ${S}x${S} xc:white \
    -fill "$BLUE" -stroke "$NAVY" -strokewidth 6 \
    -draw "path 'M 36,6 L 124,6 L 124,154 L 80,116 L 36,154 Z'" \
    -fill none -stroke white -strokewidth 10 -draw "circle 80,56 80,34" -resize 20x20!
# Folders, and the gallery's placeholder: a teal folder with a lighter tab.
OUT="$ICONS/images-D(2007-0423-011620).jpg" jpg -size ${S}x${S} xc:white \
    -fill "$MINT" -stroke "$TEAL" -strokewidth 6 \
    -draw "path 'M 8,30 L 62,30 L 76,46 L 152,46 L 152,140 L 8,140 Z'" \
    -fill "$TEAL" -stroke "$TEAL" -draw "path 'M 8,64 L 152,64 L 152,140 L 8,140 Z'" \
    -resize 20x20!

# ---- the gallery's icon of an item that holds no picture, 100 by 75 ----------------------
# An empty picture frame, mountains and a sun in pale blue, on a pale card.
OUT=$SITE/no-picture.jpg jpg -size $((100 * SS))x$((75 * SS)) gradient:"$PALE-white" \
    -fill white -stroke "$SKY" -strokewidth $((2 * SS)) \
    -draw "roundrectangle $((18 * SS)),$((12 * SS)) $((82 * SS)),$((63 * SS)) $((4 * SS)),$((4 * SS))" \
    -fill "$PALE" -stroke none \
    -draw "path 'M $((24 * SS)),$((56 * SS)) L $((40 * SS)),$((34 * SS)) L $((50 * SS)),$((46 * SS)) L $((58 * SS)),$((38 * SS)) L $((76 * SS)),$((56 * SS)) Z'" \
    -fill "$SKY" -draw "circle $((64 * SS)),$((24 * SS)) $((64 * SS)),$((19 * SS))" \
    -resize 100x75!

# ---- the program's icon: a white quill on a navy tile with a teal rim, over a mint line ----
T=$((256 * SS))
OUT=$APP/quillmere-256.png png -size ${T}x${T} xc:none \
    -fill "$NAVY" -stroke "$TEAL" -strokewidth $((12 * SS)) \
    -draw "roundrectangle $((14 * SS)),$((14 * SS)) $((242 * SS)),$((242 * SS)) $((48 * SS)),$((48 * SS))" \
    -stroke none -fill "$MINT" -draw "rectangle $((96 * SS)),$((200 * SS)) $((196 * SS)),$((208 * SS))" \
    -draw "$(quill "$(times 1.9)" "$(times 34)" "$(times 24)" white "$DEEP")" \
    -resize 256x256
for size in 128 64 48 32 16; do
    OUT=$APP/quillmere-$size.png png "$APP/quillmere-256.png" -resize ${size}x${size}
done

echo "pictures written to $ICONS, $SKINS, $SITE and $APP"
