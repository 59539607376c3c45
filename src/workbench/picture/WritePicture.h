#pragma once
// Writes a page as a picture file.

#include <ostream>
#include <string>

#include "workbench/picture/PicturePage.h"

namespace kvx::picture {

// Makes the toolkit's fonts and colours available, without a screen. While it lives pages can be
// made and drawn. One at most in a process, and no other application object.
class Offscreen {
  public:
    Offscreen();
    ~Offscreen();
    Offscreen(const Offscreen&) = delete;
    Offscreen& operator=(const Offscreen&) = delete;
};

// True: the name asks for an SVG picture.
bool IsSvgName(const std::string& name);

// PNG bytes. dpi: pixels an inch; at 96 a pixel of the page is one of the picture.
std::string EncodePng(PicturePage& page, int dpi);

// name "-": out. Answers what went wrong; empty: written.
std::string WritePicture(const std::string& bytes, const std::string& name, std::ostream& out);

}  // namespace kvx::picture
