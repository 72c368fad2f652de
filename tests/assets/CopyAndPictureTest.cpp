#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "assets/AssetPicture.h"
#include "assets/CopyAsset.h"
#include "support/Failures.h"
#include "support/Files.h"
#include "support/TestCompany.h"

namespace tallymar {
namespace {

using testing::ElementsAre;

class CopyAssetTest : public testing::Test {
 protected:
    CopyAssetTest() {
        AssetRecord source = test::Machine("A1", Date::FromYmd(2003, 1, 1), 5000);
        source.PrevDepr[2] = Units(70);
        source.Sold = true;
        company_.Session.AddAssetRecord(source);
        company_.Session.AssetsRecordset().MoveFirst();
    }

    std::vector<std::string> Copy(const std::string& prefix, const std::string& copies, std::deque<bool> answers) {
        company_.Prompts.Questions.clear();
        company_.Prompts.YesNo = std::move(answers);
        return StartCopy(company_.Session, {.Copies = copies, .Prefix = prefix, .AssetNumber = {}}, company_.Prompts);
    }

    test::TestCompany company_;
};

TEST_F(CopyAssetTest, AsksForEachCopyAndSkipsWhatIsTaken) {
    EXPECT_THAT(Copy("CPT", "3", {true, true, true}), ElementsAre("CPT001", "CPT002", "CPT003"));
    EXPECT_EQ(company_.Prompts.Questions[1].Text, "Add copy of Asset A1 as CPT002");
    EXPECT_EQ(company_.Prompts.Questions[1].Title, "Confirm - Copy Asset");
    recordset::Recordset& assets = company_.Session.AssetsRecordset();
    EXPECT_EQ(assets.Get("AssetNum").Text(), "A1    ") << "back at the source";

    AssetRecord source;
    AssetRecord copy;
    company_.Session.ReadAssetRecord(source);
    assets.Seek("CPT002");
    company_.Session.ReadAssetRecord(copy);
    copy.AssetNum = "A1";
    EXPECT_EQ(copy, source);
    assets.Seek("A1");

    // One of the three gone: refused for the first, it is proposed again for the second.
    assets.Seek("CPT002");
    assets.Delete();
    assets.Seek("A1");
    EXPECT_THAT(Copy("CPT", "2", {false, true}), ElementsAre("CPT002"));
    EXPECT_EQ(company_.Prompts.Questions[0].Text, company_.Prompts.Questions[1].Text);
}

TEST_F(CopyAssetTest, NumbersByThePrefix) {
    EXPECT_EQ(CopyNumber("AB", 1), "AB0001");
    EXPECT_EQ(CopyNumber("ABC", 12), "ABC012");
    EXPECT_EQ(CopyNumber("ABCD", 1), "ABCD01");
    EXPECT_EQ(CopyNumber("ABCDE", 1), "ABCDE1");
    EXPECT_EQ(CopyNumber("A", 1), "A1");
    EXPECT_EQ(CopyNumber("", 7), "7");
    EXPECT_THAT(Copy("X", "none", {}), ElementsAre());
    EXPECT_EQ(test::NumberOf([this] { Copy("ABCDE", "11", std::deque<bool>(11, true)); }), 3163)
        << "ABCDE10 has seven characters";
    EXPECT_EQ(company_.Session.AssetCount(), 10);
    EXPECT_EQ(CopySource(company_.Session, "B2"), "A1");
    company_.Session.AssetsRecordset().Seek("none");
    EXPECT_EQ(CopySource(company_.Session, "B2"), "B2");
}

class AssetPictureTest : public testing::Test {
 protected:
    std::filesystem::path Write(const std::filesystem::path& name, const std::string& contents) {
        const std::filesystem::path path = folder_ / name;
        std::filesystem::create_directories(path.parent_path());
        test::WriteAll(path, contents);
        return path;
    }

    test::TempFolder folder_;
    test::ScriptedPrompts prompts_;
};

TEST_F(AssetPictureTest, IsCopiedWhereTheProgramLooks) {
    const auto images = Write("Images/Press.JPG", "\xFF\xD8\xFF old").parent_path();
    const auto source = Write("camera/lathe.gif", "GIF89a");
    prompts_.OpenFiles = {source, std::nullopt, images / "Press.JPG",
                          Write("camera/a name longer than the asset can hold.jpg", "x")};
    EXPECT_EQ(AddPicture(images, prompts_), "lathe.gif");
    EXPECT_EQ(test::ReadAll(images / "lathe.gif"), "GIF89a");
    EXPECT_EQ(prompts_.Messages.back().Text,
              "Paths = " + source.parent_path().string() + " - " + (images / "lathe.gif").string() + " - " + source.string());
    EXPECT_EQ(AddPicture(images, prompts_), std::nullopt);
    EXPECT_EQ(AddPicture(images, prompts_), "Press.JPG");
    EXPECT_EQ(prompts_.Messages.size(), 1u) << "one that lies there is not copied";
    EXPECT_EQ(AddPicture(images, prompts_), std::nullopt);
    EXPECT_EQ(prompts_.Messages.size(), 2u);

    EXPECT_EQ(PicturePath(images, "press.jpg"), images / "Press.JPG");
    EXPECT_EQ(PicturePath(images, "none.jpg"), images / "none.jpg");
}

TEST_F(AssetPictureTest, NamesAndContents) {
    EXPECT_EQ(PictureCommandFor("lathe.jpg").Caption, "View &Picture");
    EXPECT_EQ(PictureCommandFor("lathe.png").Caption, "Add &Picture");
    EXPECT_EQ(PictureCommandFor("").Tip, "Add picture of Asset");

    EXPECT_EQ(PictureProblem(Write("a.jpg", "\xFF\xD8\xFF\xE0")), std::nullopt);
    EXPECT_EQ(PictureProblem(Write("a.tif", std::string("II*\0", 4))), std::nullopt);
    EXPECT_EQ(PictureProblem(Write("a.bmp", "BM")), std::nullopt);
    EXPECT_EQ(PictureProblem(Write("png.jpg", "\x89PNG")), "Invalid Placeable Picture") << "whatever its name says";
    EXPECT_EQ(PictureProblem(Write("empty.gif", "")), "Invalid Placeable Picture");
    const auto none = folder_ / "none.jpg";
    EXPECT_EQ(PictureProblem(none), "Picture file " + none.string() + " not found");
    const auto folder = folder_ / "Images";
    std::filesystem::create_directory(folder);
    EXPECT_EQ(PictureProblem(folder), "Invalid Placeable Picture");
}

}  // namespace
}  // namespace tallymar
