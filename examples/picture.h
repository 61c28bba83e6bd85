// A picture of 24-bit pixels, text in it, and its PNG file. FreeType draws the text, libpng reads
// and writes the file. Failures are thrown as std::runtime_error whose text is one line.
#pragma once

#include <ft2build.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>
#include FT_FREETYPE_H

struct Color {
  std::uint8_t red, green, blue;
};

struct Area {
  int left, top, width, height;
};

class Picture {
 public:
  Picture(int width, int height, Color background);

  int width() const { return width_; }
  int height() const { return height_; }
  Color at(int x, int y) const { return pixels_[index(x, y)]; }
  Color* data() { return pixels_.data(); }
  const Color* data() const { return pixels_.data(); }

  // Pixels outside the picture are left out.
  void set(int x, int y, Color color);
  void fill(int x, int y, int width, int height, Color color);
  void blend(int x, int y, Color color, int coverage);  // coverage 0 .. 255

 private:
  std::size_t index(int x, int y) const { return static_cast<std::size_t>(y) * width_ + x; }

  int width_, height_;
  std::vector<Color> pixels_;
};

// The part of the text that is at the given point.
enum class Anchor {
  Left,
  Centre,
  Right
};
enum class Run {
  Rightward,
  Upward
};

class Font {
 public:
  explicit Font(int pixelSize);

  int width(const std::string& text);
  // (x, y) is on the baseline.
  void draw(Picture& picture, int x, int y, const std::string& text, Anchor anchor, Color color,
            Run run = Run::Rightward);

 private:
  struct Close {
    void operator()(FT_Library library) const { FT_Done_FreeType(library); }
    void operator()(FT_Face face) const { FT_Done_Face(face); }
  };
  std::unique_ptr<FT_LibraryRec_, Close> library_;
  std::unique_ptr<FT_FaceRec_, Close> face_;
};

// Reads any kind of PNG as 8 bits of red, green and blue. Transparent parts are blended over black.
Picture readPng(const std::string& path);

// Writes the picture completely, or leaves the file at `path` as it was.
void writePng(const Picture& picture, const std::string& path);
