// Picture, Font, readPng, writePng.
#include "picture.h"

#include <png.h>

#include <stdexcept>
#include <string_view>

#include "program.h"

Picture::Picture(int width, int height, Color background)
    : width_(width),
      height_(height),
      pixels_(static_cast<std::size_t>(width) * height, background) {}

void Picture::set(int x, int y, Color color) {
  if (x >= 0 && x < width_ && y >= 0 && y < height_) pixels_[index(x, y)] = color;
}

void Picture::fill(int x, int y, int width, int height, Color color) {
  for (int row = y; row < y + height; ++row) {
    for (int column = x; column < x + width; ++column) set(column, row, color);
  }
}

void Picture::blend(int x, int y, Color color, int coverage) {
  if (x < 0 || x >= width_ || y < 0 || y >= height_) return;
  Color& pixel = pixels_[index(x, y)];
  const auto mix = [coverage](int below, int above) {
    return static_cast<std::uint8_t>((below * (255 - coverage) + above * coverage + 127) / 255);
  };
  pixel = {mix(pixel.red, color.red), mix(pixel.green, color.green), mix(pixel.blue, color.blue)};
}

namespace {

// Removes the next code point from the front of UTF-8 text and returns it. For a byte that starts
// none, as a file name may have, it returns the replacement character.
char32_t nextCodePoint(std::string_view& text) {
  const auto byte = [&text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byte(0);
  const std::size_t size = lead < 0x80 ? 1 : lead >> 5 == 6 ? 2 : lead >> 4 == 14 ? 3 : 4;
  char32_t code = size == 1 ? lead : lead & (0xffu >> (size + 1));
  bool valid = size == 1 || (lead >= 0xc2 && lead < 0xf5 && text.size() >= size);
  for (std::size_t i = 1; valid && i < size; ++i) {
    valid = byte(i) >> 6 == 2;
    code = code << 6 | (byte(i) & 0x3fu);
  }
  text.remove_prefix(valid ? size : 1);
  return valid ? code : U'\ufffd';
}

}  // namespace

Font::Font(int pixelSize) {
  FT_Library library = nullptr;
  if (FT_Init_FreeType(&library) != 0) throw std::runtime_error("FreeType does not start");
  library_.reset(library);
  FT_Face face = nullptr;
  if (FT_New_Face(library, EXAMPLES_FONT, 0, &face) != 0) {
    throw std::runtime_error(EXAMPLES_FONT ": not a readable font");
  }
  face_.reset(face);
  FT_Set_Pixel_Sizes(face, 0, static_cast<FT_UInt>(pixelSize));
}

int Font::width(const std::string& text) {
  const FT_Face face = face_.get();
  FT_Set_Transform(face, nullptr, nullptr);
  FT_Pos sum = 0;
  for (std::string_view rest = text; !rest.empty();) {
    if (FT_Load_Char(face, nextCodePoint(rest), FT_LOAD_TARGET_LIGHT) == 0) {
      sum += face->glyph->advance.x;
    }
  }
  return static_cast<int>((sum + 32) / 64);
}

void Font::draw(Picture& picture, int x, int y, const std::string& text, Anchor anchor, Color color,
                Run run) {
  const int size = width(text);
  const int back = anchor == Anchor::Left ? 0 : anchor == Anchor::Centre ? size / 2 : size;
  const bool upward = run == Run::Upward;
  const FT_Fixed one = 0x10000;
  FT_Matrix turn = upward ? FT_Matrix{0, -one, one, 0} : FT_Matrix{one, 0, 0, one};
  // FreeType's y axis points up, in units of 1/64 pixel.
  FT_Vector pen = {(upward ? x : x - back) * 64L,
                   (picture.height() - (upward ? y + back : y)) * 64L};
  const FT_Face face = face_.get();
  for (std::string_view rest = text; !rest.empty();) {
    FT_Set_Transform(face, &turn, &pen);
    if (FT_Load_Char(face, nextCodePoint(rest), FT_LOAD_RENDER | FT_LOAD_TARGET_LIGHT) != 0) {
      continue;
    }
    const FT_GlyphSlot glyph = face->glyph;
    for (unsigned row = 0; row < glyph->bitmap.rows; ++row) {
      for (unsigned column = 0; column < glyph->bitmap.width; ++column) {
        picture.blend(glyph->bitmap_left + static_cast<int>(column),
                      picture.height() - glyph->bitmap_top + static_cast<int>(row), color,
                      glyph->bitmap.buffer[row * glyph->bitmap.pitch + column]);
      }
    }
    pen.x += glyph->advance.x;
    pen.y += glyph->advance.y;
  }
}

Picture readPng(const std::string& path) {
  requireFile(path);
  struct Image : png_image {
    Image() : png_image{} { version = PNG_IMAGE_VERSION; }
    ~Image() { png_image_free(this); }
  } image;
  const auto fail = [&]() {
    throw std::runtime_error(path + ": not a readable PNG picture (" + image.message + ")");
  };
  if (png_image_begin_read_from_file(&image, path.c_str()) == 0) fail();
  image.format = PNG_FORMAT_RGB;
  Picture picture(static_cast<int>(image.width), static_cast<int>(image.height), {0, 0, 0});
  if (png_image_finish_read(&image, nullptr, picture.data(), 0, nullptr) == 0) fail();
  return picture;
}

void writePng(const Picture& picture, const std::string& path) {
  replaceFile(path, [&](std::FILE* file) -> std::string {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width());
    image.height = static_cast<png_uint_32>(picture.height());
    image.format = PNG_FORMAT_RGB;
    const int done = png_image_write_to_stdio(&image, file, 0, picture.data(), 0, nullptr);
    return done != 0 ? "" : image.message;
  });
}
