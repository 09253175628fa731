#pragma once

#include <QImage>
#include <QString>
#include <QWidget>

namespace varnel::test {

/// Holds what a widget looks like against the stored picture of that name. Machines draw letters
/// and curves a little differently, so a few pixels may differ, and every pixel a little. When it
/// fails, what was seen and where it differs stay in the working folder.
///
/// With VARNEL_UPDATE_PICTURES set the stored picture is written anew. With VARNEL_PICTURES_TO set
/// to a folder the picture is put there and compared with nothing: to look at, in whatever size,
/// scale and font the environment asks for.
void expectPicture(QWidget &widget, const QString &name);

/// Half as wide and as high, and of fewer colours: as pictures are stored and compared.
[[nodiscard]] QImage reduced(const QImage &picture);

/// Which share of the pixels may differ. Two words more or less are above that.
inline constexpr double allowedShare = 0.001;

/// By how much the tiles of a picture may differ on average, 0 to 255. A shade that changes over an
/// area can stay below what a single pixel may differ by, and is above that.
inline constexpr double allowedDrift = 0.5;

/// Where two pictures differ: white where they are alike, grey where a pixel differs by no more
/// than it may. `share` is that of the pixels that differ by more, 0 to 1, and 1 where the sizes
/// differ; `drift` is the mean difference of the tiles, 0 to 255.
struct Difference {
    QImage picture;
    double share = 0;
    double drift = 0;
};
[[nodiscard]] Difference difference(const QImage &seen, const QImage &expected);

} // namespace varnel::test
