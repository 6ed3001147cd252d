#include "models/certification.h"

#include <gtest/gtest.h>

#include "support/memory_platform.h"
#include "support/scripted_interface.h"

namespace welvane {
namespace {

TEST(Certification, takesTheBrowsersSelectionOrTheCurrentFile) {
    BatchCertification batch;
    BrowserState browser;
    browser.folder = "/wells";
    browser.selected = {"a.las", "b.las"};
    fillCr(batch, &browser, "/current.las");
    ASSERT_EQ(batch.crd.rows(), 3);
    EXPECT_EQ(batch.crd.text(2, CrdColumn::File), "/wells/b.las");
    fillCr(batch, nullptr, "/current.las");
    ASSERT_EQ(batch.crd.rows(), 2);
    EXPECT_EQ(batch.crd.text(1, CrdColumn::File), "/current.las");
}

TEST(Certification, theOptionNamesTheColumn) {
    BatchCertification batch;
    fillCr(batch, nullptr, "/current.las");
    std::vector<std::string> heads;
    for (int kind = 0; kind < checkKindCount; ++kind) {
        chooseCheck(batch, static_cast<CheckKind>(kind));
        EXPECT_EQ(batch.kind, static_cast<CheckKind>(kind));
        EXPECT_EQ(batch.crd.text(0, CrdColumn::Verdict), checkCaption(static_cast<CheckKind>(kind)));
        heads.push_back(batch.crd.text(0, CrdColumn::Verdict));
    }
    EXPECT_EQ(heads,
              (std::vector<std::string>{"Do basic fast checks", "Do WRAP Checks", "Do Complete Welvane checks"}));
    EXPECT_EQ(batch.crd.text(1, CrdColumn::File), "/current.las");
}

BatchCertification checkedBatch() {
    BatchCertification batch;
    fillCr(batch, {"failed.las", "error.las", "nothing.las"});
    batch.files[0].log = "Test 3 failed: no null";
    batch.files[1].log = "some error: x";
    for (CertifyRow& row : batch.files) row.ran = true;
    return batch;
}

TEST(Certification, clickShowsTheLog) {
    const BatchCertification batch = checkedBatch();
    CheckDetails details;
    for (const int row : {0, 3, 4}) clickRow(details, batch, row);
    EXPECT_FALSE(details.visible) << "the head, a file without a log, nothing";
    EXPECT_EQ(details.label, "Detailed Results");
    clickRow(details, batch, 1);
    EXPECT_TRUE(details.visible);
    EXPECT_EQ(details.colour, 255U);
    EXPECT_EQ(details.label, "Detailed Results for :failed.las");
    clickRow(details, batch, 2);
    EXPECT_EQ(details.text, "some error: x");
    EXPECT_EQ(details.colour, 65280U);
}

TEST(Certification, printsAllFilesOrTheCurrentOne) {
    test::ScriptedInterface user;
    test::MemoryPlatform platform;
    App app{user, platform};
    const BatchCertification batch = checkedBatch();
    user.willAnswer(Answer::No);
    EXPECT_EQ(printCertify(app, batch, 2), "error.las: Failed\r\nsome error: x\r\n");
    EXPECT_EQ(user.asked().back().title, "Print Certify Results");
    EXPECT_EQ(user.asked().back().text,
              "Do you want to print the certify results of all 3 files (Yes), or the currently selected file (No) ?");
    user.willAnswer(Answer::Yes);
    EXPECT_EQ(printCertify(app, batch, 0),
              "failed.las: Failed\r\nTest 3 failed: no null\r\nerror.las: Failed\r\nsome error: x\r\n"
              "nothing.las: Check Incomplete\r\n");
}

}  // namespace
}  // namespace welvane
