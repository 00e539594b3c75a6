#pragma once

#include "library/Settings.h"

#include <QDialog>

class QCheckBox;
class QLineEdit;
class QPushButton;
class QTabWidget;

namespace qmr {

// The property page ("Options") of one scrapbook: its display name and the build options kept
// in its ScrapbookPrj.ini, the GoogleAD box (never stored) and the first-page box (neither
// stored nor read). "Save" (also Enter) writes the page back and closes it; "Cancel" (also
// Escape) closes it; "Make" asks for an e-book built with the options as they stand on the
// page, writing nothing, and closes it. Ctrl+Tab goes to the next tab, from the last to the
// first.
class PropertyPage : public QDialog {
    Q_OBJECT
  public:
    // Loads the page from `scrapbookFolder`'s ScrapbookPrj.ini through the shared settings.
    PropertyPage(AppSettings& settings, const QString& scrapbookFolder, QWidget* parent);

    // The stored options as the page holds them now.
    ScrapbookProperties properties() const;
    bool googleAD() const;
    QTabWidget* tabs() const { return m_tabs; }
    void setMakeEnabled(bool enabled);

  Q_SIGNALS:
    void makeRequested(const ScrapbookProperties& properties, bool googleAD);

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QWidget* firstPage();
    QWidget* secondPage();
    void save();
    void make();
    void nextTab();

    AppSettings& m_settings;
    QString m_iniPath;
    QTabWidget* m_tabs = nullptr;
    QLineEdit* m_name = nullptr;
    QCheckBox* m_linkToSource = nullptr;
    QCheckBox* m_makeChm = nullptr;
    QCheckBox* m_googleAD = nullptr;
    QCheckBox* m_contentFirst = nullptr;
    QPushButton* m_make = nullptr;
};

} // namespace qmr
