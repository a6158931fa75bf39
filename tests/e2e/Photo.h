// What the pictures of the documents are made with: windows laid over each other as they stand on a desk, and
// files that are the same whenever they are made.
#pragma once

#include <QImage>
#include <QPoint>
#include <QString>
#include <QStringList>
#include <QWidget>

namespace loader::tour {

// What the widget shows now, without a frame.
[[nodiscard]] QImage Photo(QWidget& widget);
// The picture with a frame and the title, as a window manager gives them.
[[nodiscard]] QImage Framed(const QImage& picture, const QString& title);
// `front` with its upper left corner there; the picture grows where it has to.
[[nodiscard]] QImage Over(const QImage& behind, const QImage& front, const QPoint& at);
// The same in the middle.
[[nodiscard]] QImage OverTheMiddle(const QImage& behind, const QImage& front);
// A page of text of one width, as a printer takes it.
[[nodiscard]] QImage Page(const QStringList& lines);

// Writes FOLDER/NAME.png in 256 colours: those that the picture has most of, and that can be told from each
// other. TourFailure when it cannot be written.
void SavePicture(const QString& folder, const QString& name, const QImage& picture);

} // namespace loader::tour
