// Downloads through the command line: preview, verification, records and recovery.
#include "CommandLine.h"

#include "host/Json.h"

namespace qx::test {

using host::Json;

namespace {

std::string DelayDocument(int delay) {
    return R"({"format": "qx-configuration", "version": 1, "commonKeyboard": {"outputDelay": )" +
           std::to_string(delay) + "}}";
}

// A document that changes several bytes, so that a write of it can be cut in half.
std::string Changed(CommandLine& keyboard) {
    Json document = Json::parse(keyboard.Done({"upload"}));
    document["commonKeyboard"]["outputDelay"] = 77;
    document["magnetCard"]["tracks"][1]["header"] = "Shift+A";
    return keyboard.Write("till.json", document.dump());
}

} // namespace

TEST(Write, ADryRunShowsTheEffectOfADownload) {
    CommandLine keyboard;
    const std::string file = keyboard.Write("delay.json", DelayDocument(77));
    const std::string before = keyboard.Memory();
    const Json plan = Json::parse(keyboard.Done({"--json", "download", "--dry-run", file}));
    EXPECT_EQ(keyboard.Memory(), before);
    EXPECT_EQ(plan["bytesToSend"], 1);
    EXPECT_EQ(plan["ranges"][0]["address"], 4096);
    EXPECT_EQ(plan["ranges"][0]["section"], "commonKeyboard");
    EXPECT_EQ(plan["settings"], Json({{{"setting", "Keyboard › Output delay"},
                                       {"place", "/commonKeyboard/outputDelay"},
                                       {"from", "6"},
                                       {"to", "77"}}}));
    EXPECT_NE(keyboard.Done({"download", "--dry-run", file})
                  .find("MODULE_KEYBOARD  1000  1 byte  Keyboard › Output delay: 6 → 77\n"),
              std::string::npos);

    const Json done = Json::parse(keyboard.Done({"--json", "download", file}));
    EXPECT_EQ(done["direction"], "file to keyboard");
    EXPECT_EQ(done["sections"], Json({"commonKeyboard"}));
    EXPECT_EQ(done["written"], true);
    EXPECT_EQ(done["full"], false);
    EXPECT_EQ(done["bytesSent"], 1);
    EXPECT_EQ(done["verified"], true);
    EXPECT_EQ(done["settings"], plan["settings"]);
    const std::string again = keyboard.Done({"download", file});
    EXPECT_NE(again.find("nothing was written"), std::string::npos) << again;
    EXPECT_EQ(Json::parse(keyboard.Done({"--json", "download", file}))["verified"], true);

    // The keyboard already has all of it.
    const Json whole =
        Json::parse(keyboard.Done({"--json", "download", "--full", "--dry-run", file}));
    const Json sent = Json::parse(keyboard.Done({"--json", "download", "--full", file}));
    EXPECT_EQ(whole["bytesToSend"], sent["bytesSent"]);
    EXPECT_EQ(keyboard.Done({"download", "--full", "--dry-run", file}).find("holds all"),
              std::string::npos);
    const std::string unproved = keyboard.Done({"download", "--no-verify", "--full", file});
    EXPECT_NE(unproved.find("not verified"), std::string::npos) << unproved;
}

TEST(Write, AKeyboardThatLiesIsCaught) {
    CommandLine keyboard;
    const std::string file = keyboard.Write("delay.json", DelayDocument(77));
    Fault lie;
    lie.dropsWrites = true;
    const Outcome outcome = keyboard.Run({"download", file}, lie);
    EXPECT_EQ(outcome.status, 5);
    EXPECT_NE(outcome.err.find("holds 6 in place of 4D"), std::string::npos) << outcome.err;
    EXPECT_EQ(outcome.out, "");
}

TEST(Write, VariablesGetTheirValuesBySet) {
    CommandLine keyboard;
    const std::string file =
        keyboard.Write("delay.json", R"({"format": "qx-configuration", "version": 1,
                          "commonKeyboard": {"outputDelay": "${delay}"}})");
    const std::string before = keyboard.Memory();
    struct Row {
        std::vector<std::string> arguments;
        int status;
        const char* message;
    };
    const Row rows[] = {
        {{"download", file},
         6,
         "/commonKeyboard/outputDelay: a value is missing for delay; "
         "values are given by --set delay=VALUE"},
        {{"validate", "--set", "delay=7", "--set", "dealy=7", file}, 2, "no placeholder ${dealy}"},
        {{"download", file, "--set", "delay=300"}, 6, "300 is not a whole number from 0 to 255"},
        {{"download", "--set", "delay=7", "--set", "dealy=7", file}, 2, "no placeholder ${dealy}"},
        {{"download", "--set", "delay=7", "--set", "delay=8", file}, 2, "is given twice"},
        {{"download", "--set", "delay", file}, 2, "expected NAME=VALUE"},
        {{"download", "--set", "=7", file}, 2, "expected NAME=VALUE"},
        {{"validate", "--set", "delay=7", file}, 0, ""},
        {{"diff", "--set", "delay=7", file}, 1, "1 difference"},
    };
    for (const Row& row : rows) {
        const Outcome outcome = keyboard.Run(row.arguments);
        EXPECT_EQ(outcome.status, row.status) << row.message;
        EXPECT_NE(outcome.err.find(row.message), std::string::npos) << outcome.err;
    }
    EXPECT_EQ(keyboard.Memory(), before);
    keyboard.Done({"download", "--set", "delay=7", file});
    EXPECT_EQ(keyboard.Run({"diff", "--set", "delay=7", file}).status, 0);
    // Values may contain any characters.
    EXPECT_EQ(keyboard.Run({"validate", "--set", "delay=1=2", file}).status, 6);
}

TEST(Write, ReceiptsAndBackupsRecordEveryWrite) {
    CommandLine keyboard;
    EXPECT_EQ(keyboard.Done({"receipts"}), "nothing has been written yet\n");
    EXPECT_EQ(keyboard.Done({"backup", "list"}), "there are no backups\n");
    const std::string before = keyboard.Memory();
    const std::string file = Changed(keyboard);
    keyboard.Done({"download", file});
    const std::string after = keyboard.Memory();

    const Json receipts = Json::parse(keyboard.Done({"--json", "receipts"}))["receipts"];
    ASSERT_EQ(receipts.size(), 1U);
    EXPECT_EQ(receipts[0]["result"], "verified");
    EXPECT_EQ(receipts[0]["document"], file);
    const std::string told = keyboard.Done({"receipts"});
    EXPECT_NE(told.find("  download  verified  QX-POS-FULL  "), std::string::npos) << told;
    EXPECT_TRUE(told.ends_with(" bytes  " + file + "\n")) << told;
    const Json backups = Json::parse(keyboard.Done({"--json", "backup", "list"}))["backups"];
    ASSERT_EQ(backups.size(), 1U);
    const std::string id = backups[0]["id"];
    EXPECT_EQ(receipts[0]["backup"], id);
    const Json saved = Json::parse(keyboard.Done({"backup", "show", id}));
    EXPECT_EQ(saved["commonKeyboard"]["outputDelay"], 6);

    const Json restored = Json::parse(keyboard.Done({"--json", "backup", "restore", id}));
    EXPECT_EQ(restored["direction"], "backup to keyboard");
    EXPECT_EQ(restored["restored"], id);
    EXPECT_EQ(restored["bytesSent"], receipts[0]["bytesSent"]);
    EXPECT_NE(restored["backup"], id);
    EXPECT_EQ(keyboard.Memory(), before);
    const Json undone = Json::parse(keyboard.Done({"--json", "receipts"}))["receipts"];
    EXPECT_EQ(undone[1]["action"], "restore");
    EXPECT_EQ(undone[1]["afterSha256"], receipts[0]["beforeSha256"]);
    EXPECT_NE(after, before);
    EXPECT_EQ(keyboard.Run({"backup", "restore", "nonsense"}).status, 2);

    // Another keyboard is restored only on request, and keeps its identifier.
    Json own = saved;
    std::filesystem::rename(keyboard.folder / "keyboard.qxk", keyboard.folder / "first.qxk");
    own["layeredFuncKeys"]["guid"] =
        Json::parse(keyboard.Done({"upload"}))["layeredFuncKeys"]["guid"];
    keyboard.Done({"download", keyboard.Write("delay.json", DelayDocument(99))});
    const Json refused = Json::parse(keyboard.Run({"--json", "backup", "restore", id}).out);
    EXPECT_EQ(refused["error"]["code"], "keyboard-changed") << refused;
    keyboard.Done({"backup", "restore", "--other-keyboard", id});
    EXPECT_EQ(Json::parse(keyboard.Done({"upload"}))["layeredFuncKeys"], own["layeredFuncKeys"]);
}

TEST(Write, AnInterruptedWriteIsReportedAndRecovered) {
    for (const Driver driver : {Driver::InProcess, Driver::Library})
        for (const char* way : {"--finish", "--rollback"}) {
            CommandLine keyboard(driver);
            const std::string file = Changed(keyboard);
            const std::string before = keyboard.Memory();
            Fault cut;
            cut.writtenBytes = 2;
            const Outcome broken = keyboard.Run({"download", file}, cut);
            EXPECT_EQ(broken.status, 4);
            EXPECT_NE(broken.err.find("the keyboard is partly written; see qxconf recover"),
                      std::string::npos)
                << broken.err;
            EXPECT_NE(keyboard.Memory(), before);

            EXPECT_NE(keyboard.Run({"identify"}).err.find("see qxconf recover"), std::string::npos);
            const Json refused = Json::parse(keyboard.Run({"--json", "download", file}).out);
            EXPECT_EQ(refused["error"]["code"], "write-interrupted");
            EXPECT_EQ(Json::parse(keyboard.Done({"--json", "recover"}))["interrupted"]["document"],
                      file);
            cut.writtenBytes = 0;
            EXPECT_EQ(keyboard.Run({"recover", way}, cut).status, 4);
            if (driver == Driver::InProcess) {
                keyboard.Done({"param", "save", keyboard.File("p.bin")});
                const std::string half = keyboard.Memory();
                EXPECT_EQ(keyboard.Run({"param", "load", keyboard.File("p.bin")}).status, 4);
                EXPECT_EQ(keyboard.Memory(), half);
            }
            keyboard.Done({"recover", way});
            const bool isFinished = way == std::string("--finish");
            EXPECT_EQ(keyboard.Memory() == before, !isFinished);
            EXPECT_EQ(keyboard.Run({"diff", file}).status, isFinished ? 0 : 1);
            EXPECT_EQ(keyboard.Done({"recover"}), "no write to this keyboard was interrupted\n");
        }
}

TEST(Write, UnexplainedContentsAreLeftAlone) {
    CommandLine keyboard;
    const std::string file = Changed(keyboard);
    const std::string before = keyboard.Memory();
    Fault cut;
    cut.writtenBytes = 2;
    EXPECT_EQ(keyboard.Run({"download", file}, cut).status, 4);
    // Outside the ranges, then within them.
    const char beside = keyboard.Memory()[4103];
    keyboard.Poke(4103, std::string(1, static_cast<char>(beside ^ 1)));
    EXPECT_EQ(keyboard.Run({"identify"}).err, "");
    keyboard.Poke(4103, std::string(1, beside));
    EXPECT_NE(keyboard.Run({"identify"}).err, "");
    keyboard.Poke(4096, "\x33");
    const std::string found = keyboard.Memory();
    const Json told = Json::parse(keyboard.Done({"--json", "recover"}));
    EXPECT_EQ(told["interrupted"], Json());
    EXPECT_EQ(told["onRecord"][0]["trace"], "none");
    // Damaged records of other keyboards do not matter either.
    keyboard.Write("data/journal/20260131T090507.123Z-1-1.OTHER-0123456789ab.journal.json", "{");
    const Outcome identified = keyboard.Run({"--json", "identify"});
    EXPECT_EQ(identified.err, "");
    EXPECT_FALSE(Json::parse(identified.out).contains("interrupted"));
    EXPECT_EQ(keyboard.Run({"recover", "--rollback"}).status, 4);
    EXPECT_EQ(keyboard.Run({"recover", "--forget"}).status, 2) << "it must be named";
    EXPECT_EQ(keyboard.Memory(), found);
    keyboard.Done({"backup", "restore", told["onRecord"][0]["backup"]});
    EXPECT_EQ(keyboard.Memory(), before);
    EXPECT_EQ(keyboard.Run({"recover", told["onRecord"][0]["id"]}).status, 2);
    keyboard.Done({"recover", "--forget", told["onRecord"][0]["id"]});
    EXPECT_EQ(keyboard.Memory(), before);
    EXPECT_EQ(keyboard.Done({"recover"}), "no write to this keyboard was interrupted\n");
}

// A document from one keyboard sets another's identifier, and the warning explains how to avoid it.
TEST(Write, ADocumentWithoutAnIdentifierSuitsOtherKeyboards) {
    CommandLine first;
    CommandLine second;
    const Json whole = Json::parse(first.Done({"upload"}));
    const Json own = Json::parse(second.Done({"upload"}))["layeredFuncKeys"]["guid"];
    ASSERT_NE(whole["layeredFuncKeys"]["guid"], own);
    const std::string every = first.File("every.json");
    first.Done({"upload", "--no-identifier", "-o", every});
    Json expected = whole;
    expected["layeredFuncKeys"].erase("guid");
    EXPECT_EQ(Json::parse(files::ReadFile(every)), expected);
    EXPECT_EQ(second.Run({"download", every}).err, "");
    EXPECT_EQ(Json::parse(second.Done({"upload"}))["layeredFuncKeys"]["guid"], own);

    const Outcome taken = second.Run({"download", second.Write("whole.json", whole.dump())});
    EXPECT_EQ(taken.status, 0);
    EXPECT_NE(taken.err.find("gets another keyboard's identifier from"), std::string::npos)
        << taken.err;
    EXPECT_NE(taken.err.find("qxconf upload --no-identifier"), std::string::npos) << taken.err;
    EXPECT_EQ(Json::parse(second.Done({"upload"}))["layeredFuncKeys"]["guid"],
              whole["layeredFuncKeys"]["guid"]);
}

// One driver, two keyboards of the same model: A is interrupted, B is used, A is plugged in again.
TEST(Write, AnotherKeyboardIsNotMistakenForTheInterruptedOne) {
    CommandLine keyboard;
    const std::string file = Changed(keyboard);
    const std::string before = keyboard.Memory();
    const auto plugIn = [&](const char* unplugged, const char* next) {
        std::filesystem::rename(keyboard.folder / "keyboard.qxk", keyboard.folder / unplugged);
        std::filesystem::rename(keyboard.folder / next, keyboard.folder / "keyboard.qxk");
    };
    std::filesystem::copy_file(keyboard.folder / "keyboard.qxk", keyboard.folder / "B");
    Fault cut;
    cut.writtenBytes = 3;
    EXPECT_EQ(keyboard.Run({"download", file}, cut).status, 4);
    const std::string half = keyboard.Memory();

    plugIn("A", "B");
    EXPECT_EQ(keyboard.Run({"identify"}).err, "") << "the record is not about this keyboard";
    const std::string said = keyboard.Done({"recover", "--rollback"});
    EXPECT_NE(said.find("nothing was written"), std::string::npos) << said;
    EXPECT_NE(said.find("may be another one"), std::string::npos) << said;
    EXPECT_EQ(keyboard.Run({"recover", "--finish"}).status, 4);
    EXPECT_EQ(keyboard.Memory(), before);
    keyboard.Done({"download", keyboard.Write("delay.json", DelayDocument(99))});
    const Json listed = Json::parse(keyboard.Done({"--json", "recover", "--list"}))["onRecord"];
    ASSERT_EQ(listed.size(), 1U);
    EXPECT_EQ(listed[0]["document"], file);
    EXPECT_NE(keyboard.Done({"recover", "--list"}).find(listed[0]["id"].get<std::string>()),
              std::string::npos);

    plugIn("B", "A");
    EXPECT_EQ(keyboard.Memory(), half);
    EXPECT_NE(keyboard.Run({"identify"}).err.find("see qxconf recover"), std::string::npos);
    keyboard.Done({"recover", "--rollback"});
    EXPECT_EQ(keyboard.Memory(), before);
    EXPECT_EQ(keyboard.Done({"recover", "--list"}), "no interrupted writes are on record\n");
}

// Two identical tills are interrupted in writes that begin identically.
TEST(Write, OneOfSeveralInterruptedWritesIsNamed) {
    CommandLine keyboard;
    Json document = Json::parse(keyboard.Done({"upload"}));
    const auto file = keyboard.folder / "keyboard.qxk";
    const std::string before = files::ReadFile(file);
    document["commonKeyboard"]["outputDelay"] = 77;
    Fault cut;
    cut.writtenBytes = 1;
    std::string half;
    for (const char* sequence : {"A", "B"}) {
        files::WriteFileAtomically(file, before);
        document["magnetCard"]["tracks"][1]["header"] = sequence;
        const std::string name = sequence + std::string(".json");
        EXPECT_EQ(keyboard.Run({"download", keyboard.Write(name, document.dump())}, cut).status, 4);
        half = keyboard.Memory();
    }
    const std::string asked = keyboard.Done({"recover"});
    const Json listed = Json::parse(keyboard.Done({"--json", "recover"}))["onRecord"];
    ASSERT_EQ(listed.size(), 2U);
    for (const Json& write : listed)
        EXPECT_NE(asked.find(write["id"].get<std::string>()), std::string::npos) << asked;
    EXPECT_NE(asked.find("qxconf recover --finish ID"), std::string::npos) << asked;
    EXPECT_EQ(keyboard.Run({"recover", "--finish"}).status, 4);
    EXPECT_EQ(keyboard.Run({"recover", "--forget"}).status, 2);
    EXPECT_TRUE(keyboard.Memory() == half);
    keyboard.Done({"recover", "--finish", listed[0]["id"]});
    EXPECT_EQ(keyboard.Done({"diff", keyboard.File("A.json")}), "");
    const Json left = Json::parse(keyboard.Done({"--json", "recover", "--list"}))["onRecord"];
    ASSERT_EQ(left.size(), 1U);
    EXPECT_EQ(left[0]["id"], listed[1]["id"]);
}

TEST(Write, ALoadedFileLeavesABackupAndAReceipt) {
    CommandLine keyboard;
    const std::string param = keyboard.File("param.bin");
    keyboard.Done({"param", "save", param});
    keyboard.Done({"download", keyboard.Write("delay.json", DelayDocument(77))});
    const std::string before = keyboard.Memory();
    const Json done = Json::parse(keyboard.Done({"--json", "param", "load", param}));
    EXPECT_EQ(done["verified"], false);
    EXPECT_NE(keyboard.Memory(), before);
    const Json receipt = Json::parse(keyboard.Done({"--json", "receipts"}))["receipts"].back();
    EXPECT_EQ(receipt["action"], "param load");
    EXPECT_EQ(receipt["result"], "not verified");
    EXPECT_EQ(receipt["full"], true);
    EXPECT_EQ(receipt["backup"], done["backup"]);
    keyboard.Done({"backup", "restore", done["backup"]});
    EXPECT_EQ(keyboard.Memory(), before);
    const std::string bad = keyboard.Write("bad.bin", "no parameters");
    EXPECT_EQ(keyboard.Run({"param", "load", bad}).status, 4);
    const Json failed = Json::parse(keyboard.Done({"--json", "receipts"}))["receipts"].back();
    EXPECT_EQ(failed["document"], bad);
    EXPECT_EQ(failed["result"], "unknown");
}

} // namespace qx::test
