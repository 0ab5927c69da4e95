#include "programs/check/FieldsCheck.h"

#include <map>
#include <string>

#include "Support/definition/Field.h"
#include "Support/definition/FieldRule.h"
#include "Support/definition/TitleItem.h"
#include "programs/check/KeyTable.h"

namespace vemra::check {
namespace {

// The roles with a keyword, in the order in which the first one that a field names counts.
struct Role {
  std::uint32_t rule;
  const char* keyword;
};
constexpr Role kRoles[] = {{fieldrule::kAttribute, "ATTRIBUTE"},
                           {fieldrule::kTag, "TAG"},
                           {fieldrule::kId, "ID"},
                           {fieldrule::kLink, "Link"},
                           {fieldrule::kStatus, "Status"}};
constexpr std::uint32_t kAnyRole = fieldrule::kAttribute | fieldrule::kTag | fieldrule::kId |
                                   fieldrule::kLink | fieldrule::kStatus | fieldrule::kGeneral;

template <class Visit>
void ForEachField(const CTavoFileINI& fields, Visit visit) {
  for (POSITION position = fields.GetStartPosition(); position != 0;) {
    visit(*fields.GetNextField(position));
  }
}

class FieldsCheck {
 public:
  FieldsCheck(const CTavoFileINI& fields, const SettingsFile& file,
              const std::vector<TagRules>& rules)
      : fields_(fields), file_(file), rules_(rules) {}

  void Run() {
    if (fields_.GetNumOfFields() == 0) return file_.report.Error(1, "there is no field");
    CheckNames();
    CheckRoles();
    CheckTitles();
    CheckStatuses();
    for (const TagRules& rules : rules_) CheckTagRules(rules);
    CheckUse();
  }

 private:
  static std::string SectionOf(int fieldno) { return "FIELD" + std::to_string(fieldno); }
  static std::string Shown(const CTavoField& field) {
    return "field " + std::to_string(field.GetFieldno()) + ' ' + Quoted(field.GetName());
  }
  int LineOf(int fieldno, const char* key) const {
    return file_.text.LineOf(SectionOf(fieldno), key);
  }

  void CheckNames() {
    std::map<std::string, int> known;
    ForEachField(fields_, [&](const CTavoField& field) {
      const auto [first, isNew] = known.emplace(field.GetName(), field.GetFieldno());
      if (isNew) return;
      file_.report.Warn(LineOf(field.GetFieldno(), "NAME"),
                        "field " + std::to_string(first->second) + " is named " +
                            Quoted(field.GetName()) + " too; only one of them is found by name");
    });
  }

  // From the text, as loading has taken the flags of those that lost their role.
  void CheckRoles() {
    std::map<const char*, int> holders;
    ForEachField(fields_, [&](const CTavoField& field) {
      const int fieldno = field.GetFieldno();
      const std::uint32_t rules =
          ParseFieldRules(file_.text.ValueOf(SectionOf(fieldno), "FIELDRULES"));
      for (const Role& role : kRoles) {
        if ((rules & role.rule) == 0) continue;
        const auto [holder, isNew] = holders.emplace(role.keyword, fieldno);
        if (!isNew) ReportLostRole(holder->second, fieldno, role.keyword);
        holder->second = fieldno;
        return;
      }
    });
  }

  void ReportLostRole(int loser, int holder, const char* keyword) {
    file_.report.Warn(LineOf(loser, "FIELDRULES"),
                      "field " + std::to_string(holder) + " takes the role " + keyword +
                          " from field " + std::to_string(loser) + "; only the last one keeps it");
  }

  void CheckTitles() {
    int elastic = 0;
    for (int number = 1; number <= kMaxCount; ++number) {
      const std::string section = "Title Item " + std::to_string(number);
      if (file_.text.FindSection(section) == nullptr) return;
      if (file_.text.ValueOf(section, "Max. Length") != "0" || ++elastic < 2) continue;
      file_.report.Warn(file_.text.LineOf(section, "Max. Length"),
                        "only one title item may have the length 0; this one and those after it "
                        "are not read");
      return;
    }
  }

  void CheckStatuses() {
    if (fields_.GetSpecialField(SpecialField::kStatus) != nullptr) return;
    if (file_.text.FindSection("Status") == nullptr) return;
    file_.report.Warn(file_.text.LineOf("Status", ""),
                      "the statuses are not read, since no field has the rule Status");
  }

  void CheckTagRules(const TagRules& rules) {
    for (int fieldno = 0; fieldno < kMaxFields; ++fieldno) {
      if (fields_.FieldExists(fieldno)) continue;
      const auto* section = rules.file->text.FindSection("Field" + std::to_string(fieldno));
      if (section == nullptr || section->entries.empty()) continue;
      rules.file->report.Error(section->line, "there is no field " + std::to_string(fieldno) +
                                                  " in " + ShowPath(file_.report.GetPath()));
    }
    ForEachField(fields_, [&](const CTavoField& field) { CheckSpecialFields(rules, field); });
  }

  // The text can be added to the tag or attribute field only when there is one.
  void CheckSpecialFields(const TagRules& rules, const CTavoField& field) {
    const std::string section = "Field" + std::to_string(field.GetFieldno());
    const auto report = [&](const std::string& key, const char* role) {
      rules.file->report.Warn(rules.file->text.LineOf(section, key),
                              Quoted(key) + " has no effect, since no field has the rule " + role);
    };
    if (fields_.GetSpecialField(SpecialField::kTag) == nullptr) {
      for (int i = 0; i < field.GetNumberOfTags(rules.fileType); ++i) {
        if (field.IfAddToTagField(rules.fileType, i) == 0) continue;
        report("Add to Tag Field " + std::to_string(i + 1), "TAG");
      }
    }
    if (fields_.GetSpecialField(SpecialField::kAttribute) == nullptr) {
      for (int i = 0; i < field.GetNumberOfAttributes(rules.fileType); ++i) {
        if (field.IfAddToAttributeField(rules.fileType, i) == 0) continue;
        report("Add to Attribute Field " + std::to_string(i + 1), "ATTRIBUTE");
      }
    }
  }

  bool HasTagRules(const CTavoField& field) const {
    for (const TagRules& rules : rules_) {
      if (field.GetNumberOfTags(rules.fileType) > 0) return true;
      if (field.GetNumberOfAttributes(rules.fileType) > 0) return true;
    }
    return false;
  }

  // Without any tag rule it is the parsers that choose the fields, and nothing can be said.
  void CheckUse() {
    CTavoFieldList used;
    bool anyTagRules = false;
    ForEachField(fields_, [&](const CTavoField& field) {
      CTavoFieldList others = field.GetFieldList();
      if (CTavoFileINI::IsValidFieldno(field.GetParentField())) others.Set(field.GetParentField());
      others.Reset(field.GetFieldno());
      used |= others;
      if (field.HasFieldRule(kAnyRole)) used.Set(field.GetFieldno());
      if (HasTagRules(field)) {
        used.Set(field.GetFieldno());
        anyTagRules = true;
      }
    });
    for (int i = 0; i < fields_.GetNumOfTitleItems(); ++i) {
      const int fieldno = fields_.GetTitleItem(i)->GetFieldno();
      if (CTavoFileINI::IsValidFieldno(fieldno)) used.Set(fieldno);
    }
    if (!anyTagRules) return;
    ForEachField(fields_, [&](const CTavoField& field) {
      if (used.IsSet(field.GetFieldno()) != 0) return;
      file_.report.Warn(LineOf(field.GetFieldno(), ""),
                        "nothing refers to " + Shown(field) +
                            ": no tag rule, title item, INDEX list or parent field, and it has no "
                            "special role");
    });
  }

  const CTavoFileINI& fields_;
  const SettingsFile& file_;
  const std::vector<TagRules>& rules_;
};

}  // namespace

void CheckFields(const CTavoFileINI& fields, const SettingsFile& file,
                 const std::vector<TagRules>& rules) {
  FieldsCheck(fields, file, rules).Run();
}

}  // namespace vemra::check
