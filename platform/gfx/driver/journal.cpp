#include "platform/gfx/driver/journal.h"

#include <charconv>
#include <exception>

#include "platform/gfx/text_engine.h"

namespace gfx {
namespace {

// Appends pieces of a line to a text.
class Writer {
 public:
  explicit Writer(std::string& out) : out_(out) {}

  Writer& operator<<(std::string_view text) {
    out_ += text;
    return *this;
  }
  Writer& operator<<(std::int64_t number) {
    char digits[24];
    out_.append(digits, std::to_chars(digits, std::end(digits), number).ptr);
    return *this;
  }
  Writer& operator<<(POINT point) { return Pair(point.x, point.y); }
  Writer& operator<<(const RECT& box) {
    Pair(box.left, box.top) << " ";
    return Pair(box.right, box.bottom);
  }
  Writer& operator<<(const Pen& pen) {
    *this << " pen=" << pen.style << "/" << pen.width << "/";
    return Color(pen.color);
  }
  Writer& operator<<(const Brush& brush) {
    *this << " brush=";
    return brush.hollow ? *this << "hollow" : Color(brush.color);
  }
  Writer& operator<<(const Font& font) {
    const LOGFONTA& logical = font.logical;
    return *this << " font=" << logical.lfHeight << "x" << logical.lfWidth << "@"
                 << logical.lfEscapement;
  }

  Writer& Pair(std::int64_t first, std::int64_t second) { return *this << first << "," << second; }
  Writer& Color(COLORREF color) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    out_ += '#';
    for (const BYTE part : {GetRValue(color), GetGValue(color), GetBValue(color)}) {
      out_ += kDigits[part >> 4];
      out_ += kDigits[part & 15];
    }
    return *this;
  }
  Writer& Points(const POINT* points, int count) {
    *this << count;
    for (int i = 0; i < count; ++i) *this << " " << points[i];
    return *this;
  }
  // The place and size of a box whose edges are in order.
  Writer& Extent(const RECT& box) {
    Pair(box.left, box.top) << " ";
    return Pair(std::int64_t{box.right} - box.left, std::int64_t{box.bottom} - box.top);
  }
  Writer& Quoted(std::string_view text) {
    out_ += '"';
    for (const char character : text) Escaped(character);
    out_ += '"';
    return *this;
  }
  Writer& Hash(std::uint64_t hash) {
    for (int shift = 60; shift >= 0; shift -= 4) out_ += "0123456789abcdef"[hash >> shift & 15];
    return *this;
  }

 private:
  void Escaped(char character) {
    const auto byte = static_cast<BYTE>(character);
    switch (character) {
      case '"':
        out_ += "\\\"";
        return;
      case '\\':
        out_ += "\\\\";
        return;
      case '\n':
        out_ += "\\n";
        return;
      case '\r':
        out_ += "\\r";
        return;
      case '\t':
        out_ += "\\t";
        return;
      default:
        break;
    }
    if (byte >= 0x20 && byte != 0x7F) {
      out_ += character;
      return;
    }
    out_ += "\\x";
    out_ += "0123456789abcdef"[byte >> 4];
    out_ += "0123456789abcdef"[byte & 15];
  }

  std::string& out_;
};

std::uint64_t HashOf(const ImageView& image) {
  std::uint64_t hash = 0xCBF29CE484222325U;
  for (int y = 0; y < image.height; ++y) {
    const BYTE* pixel = image.top + y * image.stride;
    for (int x = 0; x < image.width; ++x, pixel += image.bytesPerPixel) {
      for (int part = 0; part < 3; ++part) hash = (hash ^ pixel[part]) * 0x100000001B3U;
    }
  }
  return hash;
}

}  // namespace

template <class Write>
void JournalDriver::Record(Clip clip, Write write) {
  if (!ok_) return;
  const std::size_t start = journal_.size();
  try {
    Writer out(journal_);
    write(out);
    out << " clip=";
    if (clip == nullptr) {
      out << "none\n";
    } else {
      out.Pair(clip->left, clip->top) << ",";
      out.Pair(clip->right, clip->bottom) << "\n";
    }
  } catch (const std::exception&) {
    journal_.resize(start);
    ok_ = false;
  }
}

TextEngine& JournalDriver::Text() { return CellText(); }

void JournalDriver::Line(POINT from, POINT to, const Pen& pen, Clip clip) {
  Record(clip, [&](Writer& out) { out << "line " << from << " " << to << pen; });
}

void JournalDriver::Polyline(const POINT* points, int count, const Pen& pen, Clip clip) {
  Record(clip, [&](Writer& out) { (out << "polyline ").Points(points, count) << pen; });
}

void JournalDriver::Polygon(const POINT* points, int count, const Pen& pen, const Brush& brush,
                            Clip clip) {
  Record(clip, [&](Writer& out) { (out << "polygon ").Points(points, count) << pen << brush; });
}

void JournalDriver::Rectangle(const RECT& box, const Pen& pen, const Brush& brush, Clip clip) {
  Record(clip, [&](Writer& out) { out << "rectangle " << box << pen << brush; });
}

void JournalDriver::Ellipse(const RECT& box, const Pen& pen, const Brush& brush, Clip clip) {
  Record(clip, [&](Writer& out) { out << "ellipse " << box << pen << brush; });
}

void JournalDriver::Fill(const RECT& box, const Brush& brush, Clip clip) {
  Record(clip, [&](Writer& out) { out << "fill " << box << brush; });
}

void JournalDriver::TextOut(const TextRun& run, Clip clip) {
  Record(clip, [&](Writer& out) {
    (out << "text " << run.at << " ").Quoted(run.text) << run.font << " color=";
    out.Color(run.color) << " align=" << run.align << " bk=" << run.bkMode;
  });
}

void JournalDriver::Dib(POINT at, const ImageView& image, Clip clip) {
  Record(clip, [&](Writer& out) {
    (out << "dib " << at << " ").Pair(image.width, image.height) << " hash=";
    out.Hash(HashOf(image));
  });
}

void JournalDriver::Stretch(const RECT& to, const ImageView& image, const RECT& from, Clip clip) {
  Record(clip, [&](Writer& out) {
    (out << "stretch ").Extent(to) << " from ";
    out.Extent(from) << " hash=";
    out.Hash(HashOf(image));
  });
}

void JournalDriver::Blit(const RECT& to, const Surface*, POINT from, Clip clip) {
  Record(clip, [&](Writer& out) { (out << "blit ").Extent(to) << " from " << from; });
}

}  // namespace gfx
