#include "kvrimage/image/word.h"
