// Pictures as PNG files, written fast.
//
// Data: a QImage; a map has a dozen colours, an axonometric view up to a thousand and more. Method:
// an opaque picture of at most 256 colours becomes an 8-bit palette picture, a quarter of the bytes
// to compress, in which runs of one byte are all that is looked for; any other picture keeps its
// channels and takes the lightest compression. Rows are not filtered: on drawn pictures that costs
// more time than it saves bytes. Qt's own writer filters every row of a picture without a palette
// in five ways and has no switch for that, which is why the library below it is called here.
#pragma once

#include "util/OutputFile.h"

#include <QImage>

#include <string>

namespace terravo {

/// The bytes of a PNG file that reads back as the same pixels with the same dots per metre.
/// @param picture  of any format; its colours are kept to 8 bits a channel.
/// Throws AppError (kDeviceIo) when the picture is empty or memory runs out.
std::string PngBytes(const QImage& picture);

/// Writes a picture as a PNG file, whole or not at all. Throws AppError (kDeviceIo).
void SavePicture(const QImage& picture, const OutputTarget& target);

} // namespace terravo
