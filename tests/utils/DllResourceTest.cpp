// Every way in which a resource library is refused, and the one in which it is taken.

#include "utils/DllResource.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "utils/Path.h"

namespace {

CString PathOf(const CString& variant) {
    const char* const bin = std::getenv("KVX_BIN_DIR");
    return kvx::JoinPath(bin ? bin : "bin", "resource_" + variant + ".dll");
}

CString RefusalOf(const CString& variant) {
    CString message;
    const auto library = CDllResource::Load(PathOf(variant), message);
    EXPECT_EQ(library == nullptr, !message.empty());
    EXPECT_EQ(AfxGetResourceHandle() != nullptr, library != nullptr);
    return message;
}

TEST(DllResource, IsRefusedForEachReasonWithItsMessage) {
    const CString version = "Incorrect version of Resources - exiting";
    EXPECT_EQ(RefusalOf("right"), "");
    EXPECT_EQ(RefusalOf("missing"), "Error loading resource DLL " + PathOf("missing"));
    EXPECT_EQ(RefusalOf("type"), "Dll " + PathOf("type") + " is not a resources Dll");
    EXPECT_EQ(RefusalOf("no_type"), "Dll " + PathOf("no_type") + " is not a resources Dll");
    EXPECT_EQ(RefusalOf("product"), version);
    EXPECT_EQ(RefusalOf("ordinal"), version);
    EXPECT_EQ(RefusalOf("interface"), version);
    EXPECT_NE(RefusalOf("no_product").find("GetDLLProductVersion"), CString::npos);
    EXPECT_EQ(AfxGetResourceHandle(), nullptr);
}

}  // namespace
