#pragma once

#include <QtGlobal>

#include <cstdint>

namespace qmr::test {

// A small deterministic generator, so a failing case can be replayed from its seed.
class XorShift {
  public:
    explicit XorShift(uint64_t seed) : m_state(seed * 2654435761u + 1) {}
    uint32_t next() {
        m_state ^= m_state << 13;
        m_state ^= m_state >> 7;
        m_state ^= m_state << 17;
        return uint32_t(m_state);
    }
    uint32_t below(uint32_t n) { return n ? next() % n : 0; }

  private:
    uint64_t m_state;
};

// How many random cases a fuzz test runs: QMR_FUZZ_ITERATIONS when set, else `usual`.
inline int FuzzIterations(int usual) {
    bool ok = false;
    const int wanted = qEnvironmentVariableIntValue("QMR_FUZZ_ITERATIONS", &ok);
    return ok && wanted > 0 ? wanted : usual;
}

} // namespace qmr::test
