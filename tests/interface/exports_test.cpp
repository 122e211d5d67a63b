/* The exported symbols, the version script and the public header say the same. */
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tool_output.hpp"

namespace interface {
namespace {

std::set<std::string> exported()
{
    return allMatches(outputOf(NW_NM " -D --defined-only " NW_LIBRARY_FILE),
                      "[0-9a-f]+ [TRDB] (\\w+)@@NETWORK_MNG_1\n");
}

std::set<std::string> listed()
{
    const std::string script = contentsOf(NW_VERSION_SCRIPT);
    const std::size_t global = script.find("global:");
    const std::size_t local = script.find("local:");
    return allMatches(script.substr(global, local - global), "(\\w+);");
}

/* The name in front of the parameters or the array's bounds of each visible declaration. */
std::set<std::string> declared()
{
    return allMatches(outputOf(NW_PREPROCESS_HEADER " " NW_HEADER_FILE),
                      "visibility\\(\"default\"\\)\\)\\)[^;(\\[]*?(\\w+)\\s*[(\\[]");
}

TEST(Interface, IsExactlyTheVersionScript)
{
    EXPECT_EQ(exported(), listed());
}

TEST(Interface, IsExactlyWhatTheHeaderDeclares)
{
    EXPECT_EQ(exported(), declared());
}

TEST(Interface, HasNoSymbolOfAnotherVersionOrKind)
{
    const std::string symbols = outputOf(NW_NM " -D --defined-only " NW_LIBRARY_FILE);
    const auto lines = allMatches(symbols, "([^\n]+)\n");

    EXPECT_EQ(lines.size(), exported().size() + 1);
    EXPECT_THAT(symbols, testing::HasSubstr(" A NETWORK_MNG_1\n"));
}

TEST(Interface, HoldsTheFunctionsOfEveryFamily)
{
    EXPECT_THAT(exported(), testing::IsSupersetOf({"LIB_NW_ChangeInvErr2IpmiCC",
                                                   "Network_RPC_Comm",
                                                   "NetworkOa_RPC_Comm",
                                                   "LIB_BLADE_RPC_WriteConfig",
                                                   "NW_SendIpmiRpc",
                                                   "LIB_NW_SetNetworkRestart",
                                                   "NW_LMDB_Get_NetStatus",
                                                   "NW_LMDB_Put_NetStatus",
                                                   "NW_LMDB_Get_DNS",
                                                   "NW_LMDB_Get_LLDP",
                                                   "NW_LMDB_GetLanCfgInfo",
                                                   "NW_LMDB_Get_IfcState",
                                                   "NW_LMDB_Put_IfcState",
                                                   "NW_LMDB_GetAnCfgInfo",
                                                   "NW_LMDB_Get_NCSI",
                                                   "LIB_NW_GetHostName",
                                                   "LIB_NW_GetNcsiConfig",
                                                   "LIB_NW_GetNcsiChannelIdOffset",
                                                   "NW_DecomposeBitmap",
                                                   "LIB_NW_SetLanConfig",
                                                   "g_astFailureOperateLogDefault",
                                                   "g_astSuccessOperateLogDescTbl",
                                                   "g_astNwOperateLogSubModuleTbl",
                                                   "NW_OperateLogBuild",
                                                   "NW_OperateLogBuildAll",
                                                   "NW_OperateLogParCardPri"}));
}

TEST(Interface, HidesWhatIsPrivate)
{
    for (const char *name :
         {"NW_ParseSucessConfigParam", "NW_OperateLogOutputCardPriPar", "NW_SendRequest",
          "NW_SuccessHostNameOperateLogBuild", "NW_SuccessLANOperateLogBuild"}) {
        EXPECT_FALSE(exported().contains(name)) << name;
    }
}

TEST(Interface, HasItsSoname)
{
    EXPECT_THAT(outputOf(NW_READELF " -d " NW_LIBRARY_FILE),
                testing::HasSubstr("Library soname: [libnetwork_mng.so.1]"));
}

} // namespace
} // namespace interface
