#pragma once

#include <QByteArray>

#include <array>
#include <cstdint>
#include <vector>

// Raw deflate data for filtered PNG scanlines, made for drawn pictures: long runs of one
// byte and rows that repeat the row above in long stretches. It looks for a match at two
// distances only, one byte back (runs), one pixel back and one row back, so it costs a few word compares
// per match where a general matcher hashes and searches every position; what it misses
// are repeats elsewhere, which such pictures rarely have. Any inflater reads the result.
//
// Rows are written into rows() and handed over with compressRows(); the last row stays
// available as the row above of the next call.
class ScanlineDeflater
{
public:
    // rowBytes: one filtered row, filter byte included; pixelBytes: bytes of one pixel;
    // maxRows: the most rows one compressRows() takes.
    ScanlineDeflater(int rowBytes, int pixelBytes, int maxRows);

    bool isValid() const { return !m_buffer.empty(); }
    // Room for maxRows rows and 16 bytes more; fill the first n rows and call
    // compressRows(n).
    uint8_t *rows() { return m_buffer.data() + m_rowBytes; }
    void compressRows(int count);
    // Ends the data: the last block is marked final when `last`; otherwise the data ends
    // on a byte boundary after an empty stored block (a sync point), so that the deflate
    // data of the next rows can follow it directly.
    void finish(bool last);

    const QByteArray &output() const { return m_out; }
    // Room for that much output up front; the output grows past it when needed.
    void reserveOutput(qsizetype bytes);

    // A match distance as written: its code, and the extra bits after it.
    struct DistanceCode {
        int code = 0;
        int extraBits = 0;
        uint32_t extra = 0;
    };

private:
    void addToken(uint32_t token);
    void writeBlock(bool final);
    void putBits(uint32_t bits, int count);
    void alignToByte();
    void reserve(qsizetype bytes);

    const int m_rowBytes;
    const int m_pixelBytes;
    const int m_maxRows;
    bool m_haveRowAbove = false;
    std::vector<uint8_t> m_buffer; // the row above, then the rows being compressed
    std::vector<uint32_t> m_tokens;
    std::array<uint32_t, 286> m_literalCounts{};
    std::array<uint32_t, 30> m_distanceCounts{};
    std::array<DistanceCode, 3> m_distances; // of a run, one pixel back, one row back

    QByteArray m_out;
    qsizetype m_outSize = 0;
    uint64_t m_bitBuffer = 0;
    int m_bitCount = 0;
};
