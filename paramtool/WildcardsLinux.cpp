#include "paramtool/Wildcards.h"

namespace loader::paramtool {

// The shell has done it, and what it has left as it was is the name of a file.
QStringList FilesMeantBy(const QString& word) {
  return {word};
}

} // namespace loader::paramtool
