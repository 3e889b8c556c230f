#pragma once

#include <cstdint>
#include <initializer_list>

// A small set of enumeration values, the stand-in for the framework's "set of" types
// (ComponentState, font styles, property attributes). Enumerations must have at most 64 values.
template <typename E> class TSet {
public:
    constexpr TSet() = default;
    constexpr TSet(std::initializer_list<E> values) {
        for (E v : values)
            m_bits |= bit(v);
    }
    constexpr bool Contains(E v) const { return (m_bits & bit(v)) != 0; }
    constexpr TSet& Include(E v) {
        m_bits |= bit(v);
        return *this;
    }
    constexpr TSet& Exclude(E v) {
        m_bits &= ~bit(v);
        return *this;
    }
    constexpr bool Empty() const { return m_bits == 0; }
    constexpr std::uint64_t Bits() const { return m_bits; }
    constexpr TSet operator+(TSet o) const { return FromBits(m_bits | o.m_bits); }
    constexpr TSet operator-(TSet o) const { return FromBits(m_bits & ~o.m_bits); }
    constexpr TSet operator*(TSet o) const { return FromBits(m_bits & o.m_bits); }
    constexpr bool operator==(const TSet&) const = default;
    static constexpr TSet FromBits(std::uint64_t bits) {
        TSet s;
        s.m_bits = bits;
        return s;
    }

private:
    static constexpr std::uint64_t bit(E v) { return std::uint64_t{1} << static_cast<unsigned>(v); }
    std::uint64_t m_bits = 0;
};
