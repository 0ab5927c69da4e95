#include "programs/check/KeyTable.h"

#include "Support/definition/FieldList.h"

namespace vemra::check {
namespace {

constexpr KeyRule kGeneralKeys[] = {
    {.name = "IndexName", .whenMissing = "the configuration cannot be loaded"},
    {.name = "IndexFolder", .kind = ValueKind::kFolder},
    {.name = "IndexDynamic", .kind = ValueKind::kNumber, .fallback = "0", .high = 1},
    {.name = "Language", .kind = ValueKind::kLanguage},
    {.name = "RTLResultView", .kind = ValueKind::kFlag, .fallback = "NO"},
    {.name = "ToolbarURL"},
    {.name = "ToolbarSize", .fallback = "80"},
    {.name = "UseSpider", .kind = ValueKind::kFlag, .fallback = "NO"},
    {.name = "Loadable", .kind = ValueKind::kFlag, .fallback = "NO"},
    {.name = "File Types", .kind = ValueKind::kCount, .fallback = "0", .high = kMaxCount},
};
constexpr KeyRule kFileTypeKeys[] = {
    {.name = "Name", .whenMissing = "the index list cannot refer to the file type"},
    {.name = "FTD"},
    {.name = "Format",
     .kind = ValueKind::kFormat,
     .whenMissing = "files of this type cannot be parsed"},
    {.name = "Language", .kind = ValueKind::kLanguage},
};
constexpr KeyRule kFileNameKeys[] = {
    {.name = "INIFile", .fallback = "IndexName.ini"},
    {.name = "IDXFile", .fallback = "IndexName.idx"},
    {.name = "FINFile", .kind = ValueKind::kNewFile, .fallback = "IndexName.fin"},
    {.name = "LOGFile", .kind = ValueKind::kNewFile, .fallback = "IndexName.log"},
    {.name = "SFMFile", .kind = ValueKind::kNewFile, .fallback = "IndexName.sfm"},
    {.name = "LCLFile", .fallback = "IndexName.lcl"},
    {.name = "SPDFile", .kind = ValueKind::kNewFile, .fallback = "IndexName.spd"},
    {.name = "AccessFile", .kind = ValueKind::kNewFile, .fallback = "IndexName.acc"},
    {.name = "TempFolder", .kind = ValueKind::kFolder, .fallback = "the system's"},
};
constexpr KeyRule kScheduleKeys[] = {
    {.name = "Unit", .kind = ValueKind::kNumber, .fallback = "0", .high = 2},
    {.name = "Mask", .kind = ValueKind::kNumber, .fallback = "0", .high = 4095},
    {.name = "Time", .kind = ValueKind::kNumber, .fallback = "0", .high = 32 * 86400 - 1},
    {.name = "Last Index Time", .kind = ValueKind::kTime, .fallback = "never"},
    {.name = "Index OK", .kind = ValueKind::kFlag, .fallback = "YES"},
    {.name = "Automatic", .kind = ValueKind::kNumber, .fallback = "0", .high = 1},
    {.name = "ReplaceLater", .kind = ValueKind::kNumber, .fallback = "0", .high = 1},
    {.name = "Encrypted", .kind = ValueKind::kNumber, .fallback = "0", .high = 1},
};
constexpr KeyRule kPathMapKeys[] = {
    {.name = "Count", .kind = ValueKind::kCount, .fallback = "0", .high = kMaxCount},
    {.name = "Path%d",
     .kind = ValueKind::kFolder,
     .whenMissing = "the pair is skipped",
     .numbers = {.countKey = "Count"}},
    {.name = "URL%d",
     .mayBeEmpty = true,
     .whenMissing = "the pair is skipped",
     .numbers = {.countKey = "Count"}},
};
constexpr SectionRule kConfigurationSections[] = {
    {.name = "General Definitions",
     .keys = kGeneralKeys,
     .whenMissing = "the configuration cannot be loaded"},
    {.name = "FileType%d",
     .keys = kFileTypeKeys,
     .numbers = {.countSection = "General Definitions", .countKey = "File Types"},
     .whenMissing = "the file type has no name and no format"},
    {.name = "File Names", .keys = kFileNameKeys},
    {.name = "Schedule", .keys = kScheduleKeys},
    {.name = "Path2URL", .keys = kPathMapKeys},
    {.name = "Options", .keys = {}, .anyKey = true},
};

constexpr KeyRule kFieldKeys[] = {
    {.name = "NAME", .whenMissing = "the field does not exist"},
    {.name = "TITLE", .fallback = "the name"},
    {.name = "CHARSET",
     .kind = ValueKind::kNumber,
     .fallback = "67699721",
     .low = INT32_MIN,
     .high = INT32_MAX},
    {.name = "FIELDRULES", .kind = ValueKind::kRules},
    {.name = "INDEX", .kind = ValueKind::kFields},
    {.name = "Parent Field", .kind = ValueKind::kParentField, .fallback = "-1"},
};
constexpr KeyRule kTitleKeys[] = {
    {.name = "Max. Length",
     .kind = ValueKind::kNumber,
     .fallback = "256",
     .low = 1,
     .high = INT32_MAX},
    {.name = "Separator", .fallback = "@"},
    {.name = "Items", .kind = ValueKind::kCount, .fallback = "0", .high = kMaxCount},
};
constexpr KeyRule kTitleItemKeys[] = {
    {.name = "Field", .kind = ValueKind::kField, .whenMissing = "the item is skipped"},
    {.name = "Max. Length",
     .kind = ValueKind::kNumber,
     .high = INT32_MAX,
     .whenMissing = "the item is skipped"},
    {.name = "Separator"},
    {.name = "Add Once", .kind = ValueKind::kFlag, .fallback = "NO"},
};
constexpr KeyRule kStatusesKeys[] = {
    {.name = "Number", .kind = ValueKind::kCount, .fallback = "0", .high = kMaxCount},
};
constexpr KeyRule kStatusKeys[] = {{.name = "Name"}, {.name = "String"}, {.name = "Picture"}};
constexpr SectionRule kFieldsSections[] = {
    {.name = "FIELD%d", .keys = kFieldKeys, .numbers = {.first = 0, .last = kMaxFields - 1}},
    {.name = "Titles", .keys = kTitleKeys},
    {.name = "Title Item %d",
     .keys = kTitleItemKeys,
     .numbers = {.countSection = "Titles", .countKey = "Items"},
     .whenMissing = "the item is skipped"},
    {.name = "Status", .keys = kStatusesKeys},
    {.name = "Status %d",
     .keys = kStatusKeys,
     .numbers = {.first = 0, .countSection = "Status", .countKey = "Number"},
     .whenMissing = "the status has empty texts"},
};

constexpr KeyRule kTagKeys[] = {
    {.name = "Tag Number", .kind = ValueKind::kCount, .fallback = "0", .high = kMaxCount},
    {.name = "Tag Path %d",
     .kind = ValueKind::kTagPath,
     .whenMissing = "it matches only what is outside all elements",
     .numbers = {.countKey = "Tag Number"}},
    {.name = "Ignore Parent Fields %d",
     .kind = ValueKind::kNumber,
     .fallback = "0",
     .high = 1,
     .numbers = {.countKey = "Tag Number"}},
    {.name = "Add to Tag Field %d",
     .kind = ValueKind::kNumber,
     .fallback = "0",
     .high = 1,
     .numbers = {.countKey = "Tag Number"}},
    {.name = "Attribute Number", .kind = ValueKind::kCount, .fallback = "0", .high = kMaxCount},
    {.name = "Attribute Path %d",
     .kind = ValueKind::kTagPath,
     .whenMissing = "it matches only what is outside all elements",
     .numbers = {.countKey = "Attribute Number"}},
    {.name = "Attribute Name %d",
     .kind = ValueKind::kAttributeName,
     .whenMissing = "it matches no attribute",
     .numbers = {.countKey = "Attribute Number"}},
    {.name = "Add to Attribute Field %d",
     .kind = ValueKind::kNumber,
     .fallback = "0",
     .high = 1,
     .numbers = {.countKey = "Attribute Number"}},
};
constexpr SectionRule kTagRulesSections[] = {
    {.name = "Field%d", .keys = kTagKeys, .numbers = {.first = 0, .last = kMaxFields - 1}},
};

constexpr KeyRule kBackgroundKeys[] = {
    {.name = "Path", .kind = ValueKind::kPicture},
    {.name = "Tile", .kind = ValueKind::kFlag, .fallback = "NO"},
};
constexpr KeyRule kHeaderKeys[] = {{.name = "Title"}, {.name = "Print"}};
constexpr KeyRule kSplashKeys[] = {
    {.name = "Path", .kind = ValueKind::kPicture},
    {.name = "Display Time",
     .kind = ValueKind::kNumber,
     .fallback = "1",
     .high = INT32_MAX,
     .needs = "Path"},
};
constexpr KeyRule kProfileKeys[] = {
    {.name = "Layout"},
    {.name = "On", .kind = ValueKind::kFlag, .fallback = "NO"},
    {.name = "Background", .kind = ValueKind::kPicture, .needs = "On"},
    {.name = "Color", .kind = ValueKind::kColor, .fallback = "0", .needs = "On"},
};
constexpr KeyRule kAboutKeys[] = {{.name = "Path", .kind = ValueKind::kPicture}};
constexpr KeyRule kRegistryKeys[] = {{.name = "Name"}};
constexpr SectionRule kLookSections[] = {
    {.name = "Background", .keys = kBackgroundKeys},
    {.name = "Header", .keys = kHeaderKeys},
    {.name = "Splash Screen", .keys = kSplashKeys},
    {.name = "Personal Profile", .keys = kProfileKeys},
    {.name = "About", .keys = kAboutKeys},
    {.name = "Registry", .keys = kRegistryKeys},
};

}  // namespace

const FileRule kConfigurationFile = kConfigurationSections;
const FileRule kFieldsFile = kFieldsSections;
const FileRule kTagRulesFile = kTagRulesSections;
const FileRule kLookFile = kLookSections;

}  // namespace vemra::check
