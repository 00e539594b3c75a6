#include "ui/LanguageDialog.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace qmr {

LanguageDialog::LanguageDialog(AppSettings& settings, QWidget* parent)
    : QDialog(parent), m_settings(settings) {
    setWindowTitle(QStringLiteral("Select Ebook Language"));
    auto* group = new QGroupBox(QStringLiteral("Language of the e-book's pages and index"), this);
    m_english = new QRadioButton(QStringLiteral("&English"), group);
    m_traditional = new QRadioButton(QStringLiteral("Chinese &Traditional"), group);
    m_simplified = new QRadioButton(QStringLiteral("Chinese &Simplified"), group);
    auto* options = new QVBoxLayout(group);
    options->addWidget(m_english);
    options->addWidget(m_traditional);
    options->addWidget(m_simplified);

    auto* ok = new QPushButton(QStringLiteral("OK"), this);
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &LanguageDialog::ok);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(group);
    layout->addLayout(buttons);

    if (QRadioButton* stored = option(m_settings.Load_Settings())) {
        stored->setChecked(true);
        stored->setFocus();
    } else {
        m_english->setFocus();
    }
}

QRadioButton* LanguageDialog::option(EbookLanguage language) const {
    switch (language) {
    case EbookLanguage::English:
        return m_english;
    case EbookLanguage::ChineseTraditional:
        return m_traditional;
    case EbookLanguage::ChineseSimplified:
        return m_simplified;
    case EbookLanguage::None:
        break;
    }
    return nullptr;
}

EbookLanguage LanguageDialog::language() const {
    if (m_english->isChecked()) return EbookLanguage::English;
    if (m_traditional->isChecked()) return EbookLanguage::ChineseTraditional;
    if (m_simplified->isChecked()) return EbookLanguage::ChineseSimplified;
    return EbookLanguage::None;
}

void LanguageDialog::ok() {
    m_settings.SaveLanguage(language());
    accept();
}

} // namespace qmr
