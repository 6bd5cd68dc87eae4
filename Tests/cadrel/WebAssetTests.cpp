#include "CadrelWeb.h"
#include "TestProject.h"

#include <gtest/gtest.h>

// The program carries each asset byte for byte, and nothing under a name it lacks.
TEST(FWebAssetTest, EmbedsTheFilesUnderWeb)
{
    const std::string Face = FTestProject::Read(CADREL_WEB_DIR "/face.js");
    ASSERT_FALSE(Face.empty());
    EXPECT_EQ(CadrelWeb::Asset("face.js"), Face);
    EXPECT_TRUE(CadrelWeb::Asset("missing.js").empty());
    EXPECT_TRUE(CadrelWeb::Asset("").empty());
}
