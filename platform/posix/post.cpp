#include "platform/post.h"

namespace plat {

void NativePostToWindow(WindowRef, unsigned) {}

}  // namespace plat
