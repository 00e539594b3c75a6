#pragma once

#include "library/Settings.h"

#include <QDialog>

class QRadioButton;

namespace qmr {

// "Select Ebook Language": English, Chinese Traditional or Chinese Simplified. It opens on the
// language in Quillmere.ini (none selected when that holds anything else); "OK" (also Enter)
// writes the choice, empty when none is selected, and closes; Escape closes without writing.
class LanguageDialog : public QDialog {
    Q_OBJECT
  public:
    LanguageDialog(AppSettings& settings, QWidget* parent);

    // The language the options select now.
    EbookLanguage language() const;
    QRadioButton* option(EbookLanguage language) const;

  private:
    void ok();
    AppSettings& m_settings;
    QRadioButton* m_english = nullptr;
    QRadioButton* m_traditional = nullptr;
    QRadioButton* m_simplified = nullptr;
};

} // namespace qmr
