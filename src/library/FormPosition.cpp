#include "library/FormPosition.h"

#include <algorithm>

namespace qmr {
namespace {

constexpr int kScreenMargin = 4; // pixels a window keeps inside each screen edge

void writeNumber(cInifile& ini, const char* key, int value, bool& ok) {
    ini.Key = QLatin1String(key);
    ini.setValue(QString::number(value));
    ok = ok && ini.Success();
}

int readTwips(cInifile& ini, const char* key, int fallbackPixels) {
    ini.Key = QLatin1String(key);
    return cInifile::CLngDefault(ini.Value(), fallbackPixels * kTwipsPerPixel);
}

// One axis: moved inside [low, high] first, then shrunk when it is still too long.
void keepInside(int& start, int& length, int low, int high) {
    if (start + length > high) start = high - length;
    if (start < low) start = low;
    if (start + length > high) length = high - start;
}

} // namespace

void SaveFormPosition(cInifile& ini, const FormPlacement& form) {
    const QString key = ini.Key;
    bool ok = true;
    if (!form.minimised) {
        writeNumber(ini, "Maximised", form.maximised ? 1 : 0, ok);
        if (!form.maximised) {
            writeNumber(ini, "Left", form.frame.left() * kTwipsPerPixel, ok);
            writeNumber(ini, "Top", form.frame.top() * kTwipsPerPixel, ok);
            writeNumber(ini, "Width", form.frame.width() * kTwipsPerPixel, ok);
            writeNumber(ini, "Height", form.frame.height() * kTwipsPerPixel, ok);
        }
    }
    ini.Key = key;
    if (!ok) ini.setFailed();
}

FormPlacement LoadFormPosition(cInifile& ini, const FormPlacement& current, QSize minimum,
                               const QRect& screen) {
    const QString key = ini.Key;
    const QString defaultValue = ini.Default;
    ini.Default = QStringLiteral("FAIL");
    int left = readTwips(ini, "Left", current.frame.left()) / kTwipsPerPixel;
    int top = readTwips(ini, "Top", current.frame.top()) / kTwipsPerPixel;
    int width =
        std::max(readTwips(ini, "Width", current.frame.width()) / kTwipsPerPixel, minimum.width());
    int height = std::max(readTwips(ini, "Height", current.frame.height()) / kTwipsPerPixel,
                          minimum.height());
    ini.Key = QStringLiteral("Maximised");
    const bool maximised = cInifile::CLngDefault(ini.Value(), 0) != 0;
    ini.Key = key;
    ini.Default = defaultValue;

    keepInside(left, width, screen.left() + kScreenMargin, screen.right() + 1 - kScreenMargin);
    keepInside(top, height, screen.top() + kScreenMargin, screen.bottom() + 1 - kScreenMargin);
    FormPlacement placed = current;
    // A screen too small for the minimum size leaves the window where it was.
    if (width >= minimum.width() && height >= minimum.height())
        placed.frame = QRect(left, top, width, height);
    placed.maximised = maximised;
    return placed;
}

} // namespace qmr
