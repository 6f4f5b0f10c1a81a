// The numbers of the server's resources; the resource compiler reads this too.
#pragma once

#define QX_TYPE_LIBRARY 1
#define QX_TOOLBOX_BITMAP 101
