#pragma once

#include <QString>

#include <cstdint>
#include <random>
#include <vector>

namespace qmr::bench {

// Page text for timing the full-text index: words drawn with Zipf's law from a made-up
// vocabulary (English-like words of 2 to 12 letters, or Chinese words of one to three
// characters in runs broken by punctuation), the same text for the same seed.
class SearchTextGenerator {
  public:
    enum class Language { English, Chinese };
    SearchTextGenerator(Language language, int vocabulary, std::uint32_t seed = 1);

    // About `words` words of text.
    QString page(int words);

  private:
    QString word();

    Language m_language;
    std::mt19937 m_random;
    std::vector<QString> m_vocabulary;
    std::vector<std::uint32_t> m_zipf; // uniform slot -> rank
};

} // namespace qmr::bench
