#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>

#include "host/NoRefCount.h"
#include "host/Services.h"
#include "support/ScriptedHost.h"
#include "utils/PlaceholderExpander.h"

namespace kvx::test {
namespace {

// Hands out texts; an operation without one fails. Asked with names, it answers with them.
class Projects final : public host::NoRefCount<IQProjectInformation> {
  public:
    std::string workspace = "work";
    std::string project = "proj";
    std::string configuration = "debug";

    HRESULT KVX_CALL QueryInterface(const GUID&, void**) override { return E_NOINTERFACE; }
    HRESULT KVX_CALL GetHomeDirectory(BSTR* out) override { return Give("/home", out); }
    HRESULT KVX_CALL GetTemporaryDirectory(BSTR* out) override { return Give("/tmp", out); }
    HRESULT KVX_CALL GetWorkspaceName(BSTR* out) override { return Give(workspace, out); }
    HRESULT KVX_CALL GetProjectName(BSTR* out) override { return Give(project, out); }
    HRESULT KVX_CALL GetConfigurationName(BSTR* out) override { return Give(configuration, out); }
    HRESULT KVX_CALL GetWorkspaceDirectory(BSTR w, BSTR* out) override {
        return Give("/" + ToUtf8(w), out);
    }
    HRESULT KVX_CALL GetProjectDirectory(BSTR w, BSTR p, BSTR* out) override {
        return Give("/" + ToUtf8(w) + "/" + ToUtf8(p), out);
    }
    HRESULT KVX_CALL GetConfigurationDirectory(BSTR w, BSTR p, BSTR c, BSTR* out) override {
        return Give("/" + ToUtf8(w) + "/" + ToUtf8(p) + "/" + ToUtf8(c), out);
    }

  private:
    static HRESULT Give(const std::string& text, BSTR* out) {
        *out = ToBstr(text);
        return S_OK;
    }
};

class Customs final : public host::NoRefCount<IQCustomPlaceholders> {
  public:
    std::map<std::string, std::string> values;
    std::vector<std::string> asked;
    HRESULT KVX_CALL QueryInterface(const GUID&, void**) override { return E_NOINTERFACE; }
    HRESULT KVX_CALL GetValue(BSTR name, BSTR* value) override {
        asked.push_back(ToUtf8(name));
        const auto at = values.find(asked.back());
        if (at == values.end()) return E_FAIL;
        *value = ToBstr(at->second);
        return S_OK;
    }
};

class Placeholders : public testing::Test {
  protected:
    Placeholders() {
        host_.services[host::kProjectInformation] = static_cast<IQProjectInformation*>(&projects_);
        host_.services[host::kCustomPlaceholders] = static_cast<IQCustomPlaceholders*>(&customs_);
    }
    CString Expand(const CString& text, const CString& file = {}) {
        return CPlaceholderExpander(&host_).Expand(text, file);
    }

    ScriptedHost host_;
    Projects projects_;
    Customs customs_;
};

TEST_F(Placeholders, OpenWhereTheRulesSay) {
    customs_.values = {{"A", "x"}};
    const std::pair<const char*, const char*> kCases[] = {
        {"", ""},
        {"no placeholder", "no placeholder"},
        {"$(A)", "x"},
        {"a $(A) b$(A)", "a x bx"},
        {"$$(A)", "$$(A)"},
        {"$$(A) $(A)", "$$(A) x"},
        {"$ (A) $A) (A)", "$ (A) $A) (A)"},
        {"$(A", "$(A"},
        {"$()", "$()"},    // too short to be one
        {"$()z", "z"},     // a name without a value
        {"$(A $(A)", ""},  // the name reaches to the first ")"
        {"$(A)$(A)(A)", "xx(A)"},
        {"\xC3\xA4$(A)\xC3\xB6", "\xC3\xA4x\xC3\xB6"},
    };
    for (const auto& [text, expanded] : kCases) EXPECT_EQ(Expand(text), expanded) << text;
}

TEST_F(Placeholders, OfTheHostsProject) {
    EXPECT_EQ(Expand("$(OWBDIR) $(TEMPDIR)"), "/home /tmp");
    EXPECT_EQ(Expand("$(WORKSPNAME) $(PROJECTNAME) $(CONFIGNAME)"), "work proj debug");
    EXPECT_EQ(Expand("$(WORKSPDIR) $(PROJDIR) $(CONFIGDIR)"), "/work /work/proj /work/proj/debug");
    // Short forms; two of them stand for two words each, and mean the first.
    EXPECT_EQ(Expand("$(CD) $(TD) $(PN)"), "/work/proj/debug /tmp proj");
    // Names are case-sensitive.
    EXPECT_EQ(Expand("$(configdir)"), "");
}

// What cannot be told yet stays under its full name, as far as its own names are missing.
TEST_F(Placeholders, StayWithoutTheirNames) {
    projects_.configuration.clear();
    EXPECT_EQ(Expand("$(CONFIGDIR) $(CD) $(CONFIGNAME)"),
              "$(CONFIGDIR) $(CONFIGDIR) $(CONFIGNAME)");
    EXPECT_EQ(Expand("$(PROJDIR)"), "/work/proj");
    projects_.project.clear();
    EXPECT_EQ(Expand("$(PROJDIR) $(PROJECTNAME) $(WORKSPDIR)"), "$(PROJDIR) $(PROJECTNAME) /work");
    projects_.workspace.clear();
    EXPECT_EQ(Expand("$(WORKSPDIR) $(WORKSPNAME)"), "$(WORKSPDIR) $(WORKSPNAME)");

    EXPECT_EQ(Expand("$(FULLFILE)$(FILENAME)$(FILELEAF)$(FILEDIR)$(EXTENSION)"),
              "$(FULLFILE)$(FILENAME)$(FILELEAF)$(FILEDIR)$(EXTENSION)");
    EXPECT_EQ(Expand("$(LINE) $(TCINSTALL) $(EXEDIR) $(EXENAME) $(TOOLDIR) $(OWB_HWND) $(OWB_ID)"),
              "$(LINE) $(TCINSTALL) $(EXEDIR) $(EXENAME) $(TOOLDIR) $(OWB_HWND) $(OWB_ID)");
    EXPECT_EQ(Expand("$(CURSOR) $(PAGENO) $(LEFT) $(CENTRE) $(RIGHT) $(DEERROR)"),
              "$(CURSOR) $(PAGENO) $(LEFT) $(CENTRE) $(RIGHT) $(DEVICEDETAILS)");
}

TEST_F(Placeholders, OfTheFile) {
    EXPECT_EQ(Expand("$(FF)|$(FILENAME)|$(FILELEAF)|$(FILEDIR)|$(EXTENSION)", "/a/b.c/run.log"),
              "/a/b.c/run.log|run.log|run|/a/b.c|log");
    EXPECT_EQ(Expand("[$(FILELEAF)|$(EXTENSION)]", "/a/b.c/makefile"), "[makefile|]");
}

TEST_F(Placeholders, OfTheHostItself) {
    customs_.values = {{"MINE", "value"}, {"ERROR", "never"}, {"LATER", ""}};
    EXPECT_EQ(Expand("$(MINE)"), "value");
    EXPECT_EQ(Expand("<$(NOSUCH)>"), "<>");
    EXPECT_EQ(Expand("<$(LATER)>"), "<>");
    EXPECT_EQ(customs_.asked, (std::vector<std::string>{"MINE", "NOSUCH", "LATER"}));
    // Built-in names are never asked for, and the first of them has no value.
    EXPECT_EQ(Expand("<$(ERROR)>"), "<>");
    EXPECT_EQ(customs_.asked.size(), 3u);
}

TEST_F(Placeholders, AreExpandedOnce) {
    customs_.values = {{"A", "$(B)"}, {"B", "$(A)"}, {"D", "$"}};
    EXPECT_EQ(Expand("$(A)$(B)"), "$(B)$(A)");
    EXPECT_EQ(Expand("$(D)(A)"), "$(A)");
    // The search goes on where a removed one stood.
    EXPECT_EQ(Expand("$(NOSUCH)$(A)"), "$(B)");
}

TEST_F(Placeholders, AreHandledUpToALimit) {
    customs_.values = {{"A", "x"}};
    std::string many;
    for (int i = 0; i < 10001; ++i) many += "$(A)";
    EXPECT_EQ(Expand(many), std::string(9999, 'x') + "$(A)$(A)");
}

TEST_F(Placeholders, WithoutAHostOrItsServices) {
    const CPlaceholderExpander alone(nullptr);
    EXPECT_EQ(alone.Expand("$(CONFIGDIR)/*.csv"), "$(CONFIGDIR)/*.csv");
    EXPECT_EQ(alone.Expand("<$(TEMPDIR)$(NOSUCH)>"), "<>");
    host_.services.clear();
    EXPECT_EQ(Expand("$(CONFIGDIR)<$(OWBDIR)>"), "$(CONFIGDIR)<>");
}

TEST_F(Placeholders, OfTheClockAndTheUser) {
    using testing::MatchesRegex;
    EXPECT_THAT(Expand("$(TIME)"), MatchesRegex("[0-2][0-9]:[0-5][0-9]:[0-6][0-9]"));
    EXPECT_THAT(Expand("$(DATE_TEXT)"), MatchesRegex("[^ ]+ [0-3][0-9], [0-9][0-9][0-9][0-9]"));
    EXPECT_THAT(Expand("$(DATE_DMY)"), MatchesRegex("[0-3][0-9]/[01][0-9]/[0-9][0-9][0-9][0-9]"));
    EXPECT_THAT(Expand("$(DATE_MDY)"), MatchesRegex("[01][0-9]/[0-3][0-9]/[0-9][0-9][0-9][0-9]"));
    EXPECT_THAT(Expand("$(DATE_YMD)"), MatchesRegex("[0-9][0-9][0-9][0-9]/[01][0-9]/[0-3][0-9]"));
    EXPECT_THAT(Expand("$(USER)"), MatchesRegex("[^ ]+"));
    EXPECT_THAT(Expand("$(WINDIR)|$(WINSYSDIR)"), MatchesRegex("/.+\\|/.+"));

    // Day, month and year are the same day's, also when the test runs at midnight.
    const std::time_t now = std::time(nullptr);
    char today[32];
    std::tm local{};
    localtime_r(&now, &local);
    std::strftime(today, sizeof today, "%Y%m%d", &local);
    const CString ymd = Expand("$(DATE_YMD)");
    if (ymd.substr(8) == std::string(today).substr(6)) {
        EXPECT_EQ(ymd, std::string(today, 4) + "/" + std::string(today + 4, 2) + "/" +
                           std::string(today + 6, 2));
    }
}

}  // namespace
}  // namespace kvx::test
