#include "CadrelWeb.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace
{
std::string ReadSource(const std::string& Name)
{
    std::ifstream File(std::string(CADREL_WEB_DIR) + "/" + Name, std::ios::binary);
    std::stringstream Bytes;
    Bytes << File.rdbuf();
    return Bytes.str();
}
} // namespace

// The program carries each asset byte for byte, and nothing under a name it lacks.
TEST(FWebAssetTest, EmbedsTheFilesUnderWeb)
{
    const std::string Face = ReadSource("face.js");
    ASSERT_FALSE(Face.empty());
    EXPECT_EQ(CadrelWeb::Asset("face.js"), Face);
    EXPECT_TRUE(CadrelWeb::Asset("missing.js").empty());
    EXPECT_TRUE(CadrelWeb::Asset("").empty());
}
