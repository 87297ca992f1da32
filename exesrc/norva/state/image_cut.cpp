// The one instance of what image and cut share.
#include "state/image_cut.h"

namespace norva {

image_parms img;
int kss;
cut_journal cutj;

} // namespace norva
