#pragma once

#include <QPixmap>
#include <QStringList>
#include <QWidget>

class QTimer;

namespace qmr {

// The screen-size picture copies of a scrapbook ("data/<id>/640x480/*.jpg", in any case), item
// folder by item folder in name order.
QStringList ScreenPictureCopies(const QString& scrapbookFolder);

// A full-screen slide show of pictures, one every few seconds. Right, Down, Page Down: the next
// picture; Left, Up, Page Up: the one before; Space: pause or go on; Escape: close.
class SlideShow : public QWidget {
    Q_OBJECT
  public:
    explicit SlideShow(QStringList pictures, QWidget* parent = nullptr);

    int current() const { return m_current; }
    bool playing() const;
    void showPicture(int index);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QStringList m_pictures;
    int m_current = 0;
    QPixmap m_pixmap;
    QTimer* m_timer = nullptr;
};

} // namespace qmr
