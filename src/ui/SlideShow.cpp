#include "ui/SlideShow.h"

#include "website/PictureSources.h"

#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QPainter>
#include <QTimer>

namespace qmr {
namespace {

constexpr int kSecondsPerPicture = 4;

} // namespace

QStringList ScreenPictureCopies(const QString& scrapbookFolder) {
    QStringList pictures;
    for (const QString& item : ItemFolders(scrapbookFolder)) {
        const QDir copies(item + kScreenCopyFolder);
        for (const QString& name : copies.entryList({QStringLiteral("*.jpg")}, QDir::Files,
                                                    QDir::Name | QDir::IgnoreCase))
            pictures.append(copies.filePath(name));
    }
    return pictures;
}

SlideShow::SlideShow(QStringList pictures, QWidget* parent)
    : QWidget(parent), m_pictures(std::move(pictures)) {
    setWindowTitle(QStringLiteral("Automatic Slider Show Pictures"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setCursor(Qt::BlankCursor);
    m_timer = new QTimer(this);
    m_timer->setInterval(kSecondsPerPicture * 1000);
    connect(m_timer, &QTimer::timeout, this, [this] { showPicture(m_current + 1); });
    showPicture(0);
    m_timer->start();
}

bool SlideShow::playing() const {
    return m_timer->isActive();
}

void SlideShow::showPicture(int index) {
    if (m_pictures.isEmpty()) return;
    const int count = int(m_pictures.size());
    m_current = ((index % count) + count) % count;
    m_pixmap.load(m_pictures.at(m_current));
    update();
}

void SlideShow::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Right:
    case Qt::Key_Down:
    case Qt::Key_PageDown:
        showPicture(m_current + 1);
        break;
    case Qt::Key_Left:
    case Qt::Key_Up:
    case Qt::Key_PageUp:
        showPicture(m_current - 1);
        break;
    case Qt::Key_Space:
        if (playing())
            m_timer->stop();
        else
            m_timer->start();
        update();
        break;
    case Qt::Key_Escape:
        close();
        break;
    default:
        QWidget::keyPressEvent(event);
        return;
    }
    // A picture chosen by hand stays its full time.
    if (playing()) m_timer->start();
}

void SlideShow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    if (!m_pixmap.isNull()) {
        const QPixmap scaled =
            m_pixmap.scaled(size(), Qt::KeepAspectRatio, Qt::SmoothTransformation);
        painter.drawPixmap((width() - scaled.width()) / 2, (height() - scaled.height()) / 2,
                           scaled);
    }
    const QString caption =
        QStringLiteral("%1 / %2   %3%4")
            .arg(m_current + 1)
            .arg(m_pictures.size())
            .arg(QDir::toNativeSeparators(m_pictures.value(m_current)),
                 playing() ? QString() : QStringLiteral("   (paused: Space goes on)"));
    painter.setPen(QColor(0xdd, 0xdd, 0xdd));
    painter.drawText(rect().adjusted(12, 0, -12, -10), Qt::AlignBottom | Qt::AlignLeft, caption);
}

} // namespace qmr
