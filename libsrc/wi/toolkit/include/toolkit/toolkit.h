#pragma once
// Everything an application window needs.

#include "toolkit/boxes.h"
#include "toolkit/buttons.h"
#include "toolkit/drawarea.h"
#include "toolkit/fields.h"
#include "toolkit/labels.h"
#include "toolkit/lists.h"
#include "toolkit/menus.h"
#include "toolkit/wi.h"
