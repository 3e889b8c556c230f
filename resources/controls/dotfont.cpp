// Turns the text form of the dot-matrix font (QXDOTFNT.txt) into its 16-colour bitmap.
//
//   qxdotfont QXDOTFNT.txt QXDOTFNT.bmp
//
// The bitmap holds 32 x 2 cells of 21 x 27 pixels; a cell is a grid of 7 x 9 dot positions of
// 3 x 3 pixels, and a glyph's 5 x 7 dots use the inner positions. An unlit dot is two pixels on
// the diagonal of its position, a lit dot fills a 2 x 2 block. Only three colours are used.
#include <array>
#include <cstdint>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

namespace {

constexpr int cellsAcross = 32, cellsDown = 2;
constexpr int cellWidth = 21, cellHeight = 27;
constexpr int width = cellsAcross * cellWidth, height = cellsDown * cellHeight;
constexpr int glyphColumns = 5, glyphRows = 7;
enum Colour : std::uint8_t { background = 0, unlitDot = 1, litDot = 2 };

using Glyph = std::array<std::string, glyphRows>;

struct Failure {
    int line;
    std::string message;
};

// The glyphs in file order. Outside a glyph, empty lines and lines starting with "#" are
// comments; a glyph is a line 'c' followed by exactly 7 rows of 5 characters "#" or ".".
std::vector<Glyph> readGlyphs(std::istream& in) {
    std::vector<Glyph> glyphs;
    std::string line;
    int number = 0;
    while (std::getline(in, line)) {
        ++number;
        if (line.empty() || line[0] == '#')
            continue;
        if (line.size() != 3 || line[0] != '\'' || line[2] != '\'')
            throw Failure{number, "erwartet wird ein Zeichen in Hochkommas, z. B. 'a'"};
        Glyph glyph;
        for (std::string& row : glyph) {
            ++number;
            if (!std::getline(in, row))
                throw Failure{number, "das Zeichen hat keine 7 Zeilen"};
            if (row.size() != glyphColumns || row.find_first_not_of("#.") != std::string::npos)
                throw Failure{number, "eine Zeile besteht aus genau 5 Zeichen \"#\" oder \".\""};
        }
        glyphs.push_back(glyph);
    }
    if (glyphs.size() != cellsAcross * cellsDown)
        throw Failure{number, "die Schrift braucht genau 64 Zeichen, gefunden: " +
                                  std::to_string(glyphs.size())};
    return glyphs;
}

std::vector<std::uint8_t> drawFont(const std::vector<Glyph>& glyphs) {
    std::vector<std::uint8_t> pixels(std::size_t(width) * height, background);
    auto set = [&](int x, int y, Colour c) { pixels[std::size_t(y) * width + x] = c; };
    for (std::size_t k = 0; k < glyphs.size(); ++k) {
        const int cellX = int(k % cellsAcross) * cellWidth;
        const int cellY = int(k / cellsAcross) * cellHeight;
        for (int dy = 0; dy < cellHeight / 3; ++dy)
            for (int dx = 0; dx < cellWidth / 3; ++dx) {
                const int px = cellX + dx * 3, py = cellY + dy * 3;
                // The outer ring of positions is the glyph's margin.
                const bool inside = dx >= 1 && dx <= glyphColumns && dy >= 1 && dy <= glyphRows;
                if (inside && glyphs[k][dy - 1][dx - 1] == '#') {
                    set(px + 1, py + 1, litDot);
                    set(px + 2, py + 1, litDot);
                    set(px + 1, py + 2, litDot);
                    set(px + 2, py + 2, litDot);
                } else {
                    set(px + 1, py + 1, unlitDot);
                    set(px + 2, py + 2, unlitDot);
                }
            }
    }
    return pixels;
}

void put16(std::vector<std::uint8_t>& out, unsigned v) {
    out.push_back(std::uint8_t(v));
    out.push_back(std::uint8_t(v >> 8));
}

void put32(std::vector<std::uint8_t>& out, unsigned v) {
    put16(out, v & 0xFFFF);
    put16(out, v >> 16);
}

// A 4-bit bottom-up BMP with a palette of the three colours.
std::vector<std::uint8_t> bmpFile(const std::vector<std::uint8_t>& pixels) {
    constexpr unsigned stride = (width * 4 + 31) / 32 * 4;
    constexpr unsigned colours = 3;
    constexpr unsigned offset = 14 + 40 + colours * 4;
    constexpr unsigned size = offset + stride * height;
    std::vector<std::uint8_t> out;
    out.push_back('B');
    out.push_back('M');
    put32(out, size);
    put32(out, 0);
    put32(out, offset);
    put32(out, 40);
    put32(out, width);
    put32(out, height);
    put16(out, 1);
    put16(out, 4);
    put32(out, 0);
    put32(out, stride * height);
    put32(out, 2835); // 72 dpi
    put32(out, 2835);
    put32(out, colours);
    put32(out, colours);
    // Blue, green, red, reserved: black, 0x008000 and 0x00FF00 (green in BGR notation).
    for (std::uint8_t g : {0x00, 0x80, 0xFF}) {
        out.push_back(0);
        out.push_back(g);
        out.push_back(0);
        out.push_back(0);
    }
    for (int y = height - 1; y >= 0; --y) {
        std::vector<std::uint8_t> row(stride, 0);
        for (int x = 0; x < width; ++x)
            row[x / 2] |= std::uint8_t(pixels[std::size_t(y) * width + x] << (x % 2 ? 0 : 4));
        out.insert(out.end(), row.begin(), row.end());
    }
    return out;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "Aufruf: qxdotfont SCHRIFT.txt SCHRIFT.bmp\n";
        return 2;
    }
    std::ifstream in(argv[1]);
    if (!in) {
        std::cerr << argv[1] << ": Datei kann nicht gelesen werden\n";
        return 1;
    }
    std::vector<Glyph> glyphs;
    try {
        glyphs = readGlyphs(in);
    } catch (const Failure& f) {
        std::cerr << argv[1] << ":" << f.line << ": " << f.message << "\n";
        return 1;
    }
    const std::vector<std::uint8_t> bytes = bmpFile(drawFont(glyphs));
    std::ofstream out(argv[2], std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
    if (!out.flush()) {
        std::cerr << argv[2] << ": Datei kann nicht geschrieben werden\n";
        return 1;
    }
    return 0;
}
