/// The one export macro: what carries it can be called from outside the library that defines it.
#pragma once

#define KIV_EXPORT __attribute__((visibility("default")))
