#pragma once

#include <cstdint>
#include <initializer_list>

// A small set of enumeration values, the stand-in for the framework's "set of" types
// (ComponentState, font styles, property attributes). Enumerations must have at most 64 values.
template <typename E> class TSet {
public:
    constexpr TSet() = default;
    // The set of the values listed.
    constexpr TSet(std::initializer_list<E> values) {
        for (E v : values)
            m_bits |= bit(v);
    }
    // Whether v is in the set.
    constexpr bool Contains(E v) const { return (m_bits & bit(v)) != 0; }
    // Adds v.
    constexpr TSet& Include(E v) {
        m_bits |= bit(v);
        return *this;
    }
    // Removes v.
    constexpr TSet& Exclude(E v) {
        m_bits &= ~bit(v);
        return *this;
    }
    // Whether no value is in the set.
    constexpr bool Empty() const { return m_bits == 0; }
    // The set as bits, value n at bit n.
    constexpr std::uint64_t Bits() const { return m_bits; }
    // The union.
    constexpr TSet operator+(TSet o) const { return FromBits(m_bits | o.m_bits); }
    // The values not in o.
    constexpr TSet operator-(TSet o) const { return FromBits(m_bits & ~o.m_bits); }
    // The intersection.
    constexpr TSet operator*(TSet o) const { return FromBits(m_bits & o.m_bits); }
    // Equal when they hold the same values.
    constexpr bool operator==(const TSet&) const = default;
    // The set whose bits Bits() returns.
    static constexpr TSet FromBits(std::uint64_t bits) {
        TSet s;
        s.m_bits = bits;
        return s;
    }

private:
    static constexpr std::uint64_t bit(E v) { return std::uint64_t{1} << static_cast<unsigned>(v); }
    std::uint64_t m_bits = 0;
};
