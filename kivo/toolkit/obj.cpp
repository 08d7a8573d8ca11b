#include "kivo/toolkit/obj.h"

KIVO_OBJ::~KIVO_OBJ() = default;
