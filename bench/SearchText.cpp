#include "SearchText.h"

namespace qmr::bench {

namespace {

constexpr int kZipfSlots = 1 << 20;

} // namespace

SearchTextGenerator::SearchTextGenerator(Language language, int vocabulary, std::uint32_t seed)
    : m_language(language), m_random(seed) {
    static const char* const syllables[] = {"ka", "ro",  "mi", "te",  "sun", "lo", "ber", "an",
                                            "di", "qua", "ex", "tor", "ne",  "vi", "sh",  "o"};
    std::uniform_int_distribution<int> syllable(0, 15), length(1, 5);
    // Chinese words of one to three characters (mostly two) from 3,500 characters, the first
    // ones far more common than the last, as in real text.
    std::uniform_real_distribution<double> unit(0, 1);
    auto han = [&] { return char16_t(0x4E00 + int(3500 * unit(m_random) * unit(m_random))); };
    for (int i = 0; i < vocabulary; ++i) {
        QString w;
        if (language == Language::Chinese) {
            const double kind = unit(m_random);
            for (int n = kind < 0.3 ? 1 : kind < 0.85 ? 2 : 3; n > 0; --n)
                w += QChar(han());
        } else {
            for (int n = length(m_random); n > 0; --n)
                w += QLatin1String(syllables[syllable(m_random)]);
            if (i % 7 == 0) w[0] = w[0].toUpper();
        }
        m_vocabulary.push_back(w);
    }
    // Zipf's law: rank r is drawn in proportion to 1/r.
    double total = 0;
    for (int r = 1; r <= vocabulary; ++r)
        total += 1.0 / r;
    double reached = 0;
    int rank = 0;
    m_zipf.resize(kZipfSlots);
    for (int slot = 0; slot < kZipfSlots; ++slot) {
        while (rank + 1 < vocabulary && reached + 1.0 / (rank + 1) < total * slot / kZipfSlots)
            reached += 1.0 / ++rank;
        m_zipf[slot] = std::uint32_t(rank);
    }
}

QString SearchTextGenerator::word() {
    return m_vocabulary[m_zipf[m_random() % kZipfSlots]];
}

QString SearchTextGenerator::page(int words) {
    QString text;
    text.reserve(words * 8);
    for (int i = 0; i < words; ++i) {
        text += word();
        if (m_language == Language::Chinese)
            text += (i % 13 == 12) ? QStringLiteral("\u3002") : QString();
        else
            text += (i % 15 == 14) ? QStringLiteral(". ") : QStringLiteral(" ");
        if (i % 50 == 0) text += QString::number(m_random() % 3000) + QLatin1Char(' ');
    }
    return text;
}

} // namespace qmr::bench
