#include "guide/ScanlineDeflater.h"

#include <QtEndian>
#include <QtGlobal>

#include <algorithm>
#include <cstring>
#include <queue>

namespace {

constexpr int kMinMatch = 3;
// Writers of rows() may store a few bytes past the last row.
constexpr size_t kRowSlack = 16;
constexpr int kMaxMatch = 258;
constexpr int kMaxDistance = 32768;
// A row-above match costs about 13 extra bits for its distance; shorter ones lose to literals.
constexpr int kMinRowMatch = 5;
constexpr size_t kBlockTokens = size_t(1) << 16;
constexpr int kEndOfBlock = 256;
// A token is a literal byte, or kMatchFlag | length << 16 | the slot of its distance.
constexpr uint32_t kMatchFlag = 0x80000000u;
constexpr uint32_t kRunSlot = 0, kPixelSlot = 1, kRowSlot = 2;

struct LengthCode {
    uint16_t symbol = 0;
    uint8_t extraBits = 0;
    uint16_t base = 0;
};

// Length 3..258 to its symbol (257..285), extra bit count and the symbol's first length.
const std::array<LengthCode, kMaxMatch + 1> &lengthCodes()
{
    static const std::array<LengthCode, kMaxMatch + 1> table = [] {
        static constexpr uint16_t base[29] = {3,  4,  5,  6,  7,  8,  9,  10, 11,  13,  15,  17,  19,  23, 27,
                                              31, 35, 43, 51, 59, 67, 83, 99, 115, 131, 163, 195, 227, 258};
        static constexpr uint8_t extra[29] = {0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2,
                                              2, 3, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 5, 0};
        std::array<LengthCode, kMaxMatch + 1> t{};
        for (int code = 0; code < 29; ++code) {
            const int last = code == 28 ? kMaxMatch : base[code] + (1 << extra[code]) - 1;
            for (int length = base[code]; length <= last && length <= kMaxMatch; ++length)
                t[size_t(length)] = {uint16_t(257 + code), extra[code], base[code]};
        }
        // 258 has a symbol of its own; the run of symbol 284 stops at 257.
        t[kMaxMatch] = {285, 0, kMaxMatch};
        return t;
    }();
    return table;
}

ScanlineDeflater::DistanceCode distanceCode(uint32_t distance)
{
    const uint32_t n = distance - 1;
    if (n < 4)
        return {int(n), 0, 0};
    const int high = 31 - qCountLeadingZeroBits(n);
    return {2 * high + int((n >> (high - 1)) & 1u), high - 1, n & ((1u << (high - 1)) - 1u)};
}

// How many bytes from a equal those from b, up to max; a and b may overlap (b < a).
inline int matchLength(const uint8_t *a, const uint8_t *b, int max)
{
    int k = 0;
    while (k + 8 <= max) {
        const quint64 diff = qFromLittleEndian<quint64>(a + k) ^ qFromLittleEndian<quint64>(b + k);
        if (diff)
            return k + int(qCountTrailingZeroBits(diff) >> 3);
        k += 8;
    }
    while (k < max && a[k] == b[k])
        ++k;
    return k;
}

// Huffman code lengths for `counts`, none longer than `limit`; unused symbols get 0. When
// the tree is too deep the counts are flattened and the code built again.
void huffmanLengths(const uint32_t *counts, int n, int limit, uint8_t *lengths)
{
    std::fill(lengths, lengths + n, uint8_t(0));
    std::vector<uint64_t> weights(counts, counts + n);
    for (;;) {
        std::vector<int> leaves;
        for (int i = 0; i < n; ++i) {
            if (weights[size_t(i)] > 0)
                leaves.push_back(i);
        }
        if (leaves.empty())
            return;
        if (leaves.size() == 1) {
            lengths[leaves.front()] = 1;
            return;
        }
        std::stable_sort(leaves.begin(), leaves.end(),
                         [&](int a, int b) { return weights[size_t(a)] < weights[size_t(b)]; });
        // Two queues: the sorted leaves, and the joined nodes, made in rising weight.
        const int leafCount = int(leaves.size());
        std::vector<uint64_t> nodeWeight(size_t(leafCount - 1));
        std::vector<int> parent(size_t(2 * leafCount - 1), -1); // leaves first, then nodes
        int nextLeaf = 0, nextNode = 0, made = 0;
        auto takeSmallest = [&]() {
            if (nextLeaf < leafCount
                && (nextNode >= made || weights[size_t(leaves[size_t(nextLeaf)])] <= nodeWeight[size_t(nextNode)])) {
                const uint64_t w = weights[size_t(leaves[size_t(nextLeaf)])];
                return std::pair<int, uint64_t>(nextLeaf++, w);
            }
            const int node = nextNode++;
            return std::pair<int, uint64_t>(leafCount + node, nodeWeight[size_t(node)]);
        };
        for (; made < leafCount - 1;) {
            const auto a = takeSmallest();
            const auto b = takeSmallest();
            nodeWeight[size_t(made)] = a.second + b.second;
            parent[size_t(a.first)] = parent[size_t(b.first)] = leafCount + made;
            ++made;
        }
        // Depths from the root (the last node) down: parents are made after their children.
        std::vector<int> depth(parent.size(), 0);
        int deepest = 0;
        for (int i = int(parent.size()) - 2; i >= 0; --i) {
            depth[size_t(i)] = depth[size_t(parent[size_t(i)])] + 1;
            if (i < leafCount)
                deepest = std::max(deepest, depth[size_t(i)]);
        }
        if (deepest <= limit) {
            for (int i = 0; i < leafCount; ++i)
                lengths[leaves[size_t(i)]] = uint8_t(depth[size_t(i)]);
            return;
        }
        for (uint64_t &w : weights) {
            if (w > 0)
                w = (w >> 1) | 1u;
        }
    }
}

// Canonical codes for the lengths, bit-reversed for the least-significant-first stream.
void canonicalCodes(const uint8_t *lengths, int n, uint16_t *codes)
{
    int count[16] = {};
    for (int i = 0; i < n; ++i)
        ++count[lengths[i]];
    count[0] = 0;
    uint32_t next[16] = {};
    uint32_t code = 0;
    for (int bits = 1; bits <= 15; ++bits) {
        code = (code + uint32_t(count[bits - 1])) << 1;
        next[bits] = code;
    }
    for (int i = 0; i < n; ++i) {
        const int len = lengths[i];
        if (len == 0) {
            codes[i] = 0;
            continue;
        }
        uint32_t c = next[len]++;
        uint32_t reversed = 0;
        for (int b = 0; b < len; ++b, c >>= 1)
            reversed = (reversed << 1) | (c & 1u);
        codes[i] = uint16_t(reversed);
    }
}

// Every code gets at least two symbols: a code of one symbol is incomplete, which some
// inflaters refuse.
void ensureTwoSymbols(uint32_t *counts, int n)
{
    int used = 0;
    for (int i = 0; i < n; ++i)
        used += counts[i] > 0 ? 1 : 0;
    for (int i = 0; i < n && used < 2; ++i) {
        if (counts[i] == 0) {
            counts[i] = 1;
            ++used;
        }
    }
}

struct CodeLengthSymbol {
    uint8_t symbol;
    uint8_t extra;
};

// The code lengths of both codes, run-length coded with symbols 16 (repeat the previous
// 3-6 times), 17 (3-10 zeros) and 18 (11-138 zeros).
std::vector<CodeLengthSymbol> runLengthCoded(const std::vector<uint8_t> &lengths)
{
    std::vector<CodeLengthSymbol> out;
    size_t i = 0;
    while (i < lengths.size()) {
        const uint8_t value = lengths[i];
        size_t run = 1;
        while (i + run < lengths.size() && lengths[i + run] == value)
            ++run;
        i += run;
        if (value == 0) {
            while (run >= 11) {
                const size_t r = std::min<size_t>(run, 138);
                out.push_back({18, uint8_t(r - 11)});
                run -= r;
            }
            if (run >= 3) {
                out.push_back({17, uint8_t(run - 3)});
                run = 0;
            }
        } else {
            out.push_back({value, 0});
            --run;
            while (run >= 3) {
                const size_t r = std::min<size_t>(run, 6);
                out.push_back({16, uint8_t(r - 3)});
                run -= r;
            }
        }
        for (; run > 0; --run)
            out.push_back({value, 0});
    }
    return out;
}

} // namespace

ScanlineDeflater::ScanlineDeflater(int rowBytes, int pixelBytes, int maxRows)
    : m_rowBytes(std::max(1, rowBytes))
    , m_pixelBytes(std::clamp(pixelBytes, 1, 8))
    , m_maxRows(std::max(1, maxRows))
{
    m_buffer.resize(size_t(m_rowBytes) * size_t(m_maxRows + 1) + kRowSlack);
    m_distances[kRunSlot] = distanceCode(1);
    m_distances[kPixelSlot] = distanceCode(uint32_t(m_pixelBytes));
    m_distances[kRowSlot] = distanceCode(uint32_t(std::min(m_rowBytes, kMaxDistance)));
    m_tokens.reserve(kBlockTokens);
}

void ScanlineDeflater::compressRows(int count)
{
    count = std::clamp(count, 0, m_maxRows);
    if (count == 0)
        return;
    const uint8_t *data = m_buffer.data() + m_rowBytes;
    const uint8_t *end = data + size_t(count) * size_t(m_rowBytes);
    // The earliest byte a match may copy: the data of this stream only.
    const uint8_t *start = m_haveRowAbove ? m_buffer.data() : data;
    const bool rowMatches = m_rowBytes <= kMaxDistance;
    const uint8_t *p = data;
    while (p < end) {
        const int max = int(std::min<ptrdiff_t>(kMaxMatch, end - p));
        const ptrdiff_t history = p - start;
        int best = 0;
        uint32_t slot = kRunSlot;
        if (history >= 1)
            best = matchLength(p, p - 1, max);
        if (best < max && m_pixelBytes > 1 && history >= m_pixelBytes) {
            const int length = matchLength(p, p - m_pixelBytes, max);
            if (length > best) {
                best = length;
                slot = kPixelSlot;
            }
        }
        if (best < max && rowMatches && history >= m_rowBytes) {
            const int length = matchLength(p, p - m_rowBytes, max);
            if (length >= kMinRowMatch && length > best) {
                best = length;
                slot = kRowSlot;
            }
        }
        if (best >= kMinMatch) {
            addToken(kMatchFlag | (uint32_t(best) << 16) | slot);
            p += best;
        } else {
            addToken(*p);
            ++p;
        }
    }
    std::memcpy(m_buffer.data(), end - m_rowBytes, size_t(m_rowBytes));
    m_haveRowAbove = true;
}

void ScanlineDeflater::addToken(uint32_t token)
{
    if (token & kMatchFlag) {
        ++m_literalCounts[lengthCodes()[(token >> 16) & 0x1ffu].symbol];
        ++m_distanceCounts[size_t(m_distances[token & 3u].code)];
    } else {
        ++m_literalCounts[token];
    }
    m_tokens.push_back(token);
    if (m_tokens.size() >= kBlockTokens)
        writeBlock(false);
}

void ScanlineDeflater::reserveOutput(qsizetype bytes)
{
    if (bytes > m_out.size())
        m_out.resize(bytes);
}

void ScanlineDeflater::reserve(qsizetype bytes)
{
    if (m_out.size() < m_outSize + bytes)
        m_out.resize(std::max(m_outSize + bytes, m_out.size() + m_out.size() / 2));
}

Q_ALWAYS_INLINE void ScanlineDeflater::putBits(uint32_t bits, int count)
{
    m_bitBuffer |= uint64_t(bits) << m_bitCount;
    m_bitCount += count;
    if (m_bitCount >= 32) {
        qToLittleEndian(quint32(m_bitBuffer), m_out.data() + m_outSize);
        m_outSize += 4;
        m_bitBuffer >>= 32;
        m_bitCount -= 32;
    }
}

void ScanlineDeflater::alignToByte()
{
    while (m_bitCount > 0) {
        m_out[m_outSize++] = char(m_bitBuffer & 0xffu);
        m_bitBuffer >>= 8;
        m_bitCount = std::max(0, m_bitCount - 8);
    }
    m_bitBuffer = 0;
}

// One block with codes made for its own tokens.
void ScanlineDeflater::writeBlock(bool final)
{
    std::array<uint32_t, 286> literalCounts = m_literalCounts;
    std::array<uint32_t, 30> distanceCounts = m_distanceCounts;
    literalCounts[kEndOfBlock] = 1;
    ensureTwoSymbols(literalCounts.data(), 286);
    ensureTwoSymbols(distanceCounts.data(), 30);
    uint8_t literalLengths[286], distanceLengths[30];
    huffmanLengths(literalCounts.data(), 286, 15, literalLengths);
    huffmanLengths(distanceCounts.data(), 30, 15, distanceLengths);
    uint16_t literalCodes[286], distanceCodes[30];
    canonicalCodes(literalLengths, 286, literalCodes);
    canonicalCodes(distanceLengths, 30, distanceCodes);

    int literalsSent = 286;
    while (literalsSent > 257 && literalLengths[literalsSent - 1] == 0)
        --literalsSent;
    int distancesSent = 30;
    while (distancesSent > 1 && distanceLengths[distancesSent - 1] == 0)
        --distancesSent;
    std::vector<uint8_t> lengths(literalLengths, literalLengths + literalsSent);
    lengths.insert(lengths.end(), distanceLengths, distanceLengths + distancesSent);
    const std::vector<CodeLengthSymbol> coded = runLengthCoded(lengths);
    uint32_t lengthCounts[19] = {};
    for (const CodeLengthSymbol &c : coded)
        ++lengthCounts[c.symbol];
    ensureTwoSymbols(lengthCounts, 19);
    uint8_t lengthLengths[19];
    huffmanLengths(lengthCounts, 19, 7, lengthLengths);
    uint16_t lengthCodesOut[19];
    canonicalCodes(lengthLengths, 19, lengthCodesOut);
    static constexpr uint8_t order[19] = {16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1, 15};
    int lengthsSent = 19;
    while (lengthsSent > 4 && lengthLengths[order[lengthsSent - 1]] == 0)
        --lengthsSent;

    // Header, code lengths and tokens: at most 48 bits a token.
    reserve(qsizetype(m_tokens.size()) * 6 + 1024);
    putBits(final ? 1u : 0u, 1);
    putBits(2, 2); // dynamic codes
    putBits(uint32_t(literalsSent - 257), 5);
    putBits(uint32_t(distancesSent - 1), 5);
    putBits(uint32_t(lengthsSent - 4), 4);
    for (int i = 0; i < lengthsSent; ++i)
        putBits(lengthLengths[order[i]], 3);
    static constexpr int extraBits[19] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2, 3, 7};
    for (const CodeLengthSymbol &c : coded) {
        putBits(lengthCodesOut[c.symbol], lengthLengths[c.symbol]);
        if (extraBits[c.symbol])
            putBits(c.extra, extraBits[c.symbol]);
    }
    // Each match distance is one of three: its code and extra bits as one field.
    uint32_t distanceBits[3];
    int distanceBitCount[3];
    for (int slot = 0; slot < 3; ++slot) {
        const DistanceCode &dc = m_distances[size_t(slot)];
        distanceBits[slot] = distanceCodes[dc.code] | (dc.extra << distanceLengths[dc.code]);
        distanceBitCount[slot] = distanceLengths[dc.code] + dc.extraBits;
    }
    const auto &lengthTable = lengthCodes();
    for (const uint32_t token : m_tokens) {
        if (!(token & kMatchFlag)) {
            putBits(literalCodes[token], literalLengths[token]);
            continue;
        }
        const int length = int((token >> 16) & 0x1ffu);
        const LengthCode &lc = lengthTable[size_t(length)];
        putBits(literalCodes[lc.symbol] | (uint32_t(length - lc.base) << literalLengths[lc.symbol]),
                literalLengths[lc.symbol] + lc.extraBits);
        putBits(distanceBits[token & 3u], distanceBitCount[token & 3u]);
    }
    putBits(literalCodes[kEndOfBlock], literalLengths[kEndOfBlock]);

    m_tokens.clear();
    m_literalCounts.fill(0);
    m_distanceCounts.fill(0);
}

void ScanlineDeflater::finish(bool last)
{
    if (!m_tokens.empty() || last)
        writeBlock(last);
    reserve(16);
    if (!last) {
        putBits(0, 3); // an empty stored block: header, then its lengths on a byte boundary
        alignToByte();
        static constexpr char emptyStored[4] = {0, 0, char(0xff), char(0xff)};
        std::memcpy(m_out.data() + m_outSize, emptyStored, 4);
        m_outSize += 4;
    } else {
        alignToByte();
    }
    m_out.resize(m_outSize);
}
