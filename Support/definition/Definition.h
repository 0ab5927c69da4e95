#pragma once

// All of the database definition.

#include "Support/definition/Attribute.h"
#include "Support/definition/BitArray.h"
#include "Support/definition/DirScan.h"
#include "Support/definition/Directories.h"
#include "Support/definition/Field.h"
#include "Support/definition/FieldList.h"
#include "Support/definition/FieldRule.h"
#include "Support/definition/FileCFG.h"
#include "Support/definition/FileDict.h"
#include "Support/definition/FileIDX.h"
#include "Support/definition/FileIDXitem.h"
#include "Support/definition/FileINI.h"
#include "Support/definition/FileLCL.h"
#include "Support/definition/FileType.h"
#include "Support/definition/FixedBitArray.h"
#include "Support/definition/Path2URL.h"
#include "Support/definition/Schedule.h"
#include "Support/definition/Tag.h"
#include "Support/definition/TitleItem.h"
