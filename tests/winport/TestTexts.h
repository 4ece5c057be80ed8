// Numbers of texts in TestTexts.rc.
#pragma once

#define IDS_TWO 2
