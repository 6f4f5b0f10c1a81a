// The numbers of the server's resources; also read by the resource compiler.
#pragma once

#define QX_TYPE_LIBRARY 1
#define QX_TOOLBOX_BITMAP 101
