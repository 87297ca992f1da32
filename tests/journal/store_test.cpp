#include "journal_fixture.h"

namespace norva::test {

using store_test = journal_test;

TEST_F(store_test, CursorMovesAndAStepAfterBackingUpCutsOffTheLaterOnes) {
    ASSERT_TRUE(begin("a.jou;1").empty());
    for (int i = 0; i < 8; i++) ASSERT_EQ(ask(record(i, i)), reply(i, record(i, i)));

    EXPECT_EQ(text({92, 1}), "***Error...Cannot advance any further");
    EXPECT_EQ(text({92, 0}), "***Error...No backup/forward indicated");
    EXPECT_EQ(ask({92, -1}), reply(6, record(6, 6)));
    EXPECT_EQ(ask({92, 5}), reply(7, record(7, 7))) << "held to the last record";
    EXPECT_EQ(ask({91, 1}), reply(1, record(1, 1)));
    EXPECT_EQ(ask({92, -2}), reply(0, record(0, 0))) << "held to the first";
    EXPECT_EQ(text({92, -1}), "***Error...Cannot backup any further");
    EXPECT_EQ(ask({91, 1000}), reply(7, record(7, 7)));
    EXPECT_EQ(text({91, -1}), "***Error...This processing step is not defined");

    ask({91, 3});
    EXPECT_EQ(journal_next_index(), 4);
    EXPECT_EQ(ask(record(29, 2, 5)), reply(4, record(29, 2, 5)));
    EXPECT_EQ(ask({96, 100}), (words{4, 0, 0, 1, 0, 2, 0, 3, 0, 29, 5}));
}

TEST_F(store_test, ListCarriesTheTagArrayOfAnImageAndStopsAtItsRoom) {
    begin("a.jou;1");
    ask(record(0, 4));
    ask({27, 2, 6, 1, 2, 3, 4, 101, 119});
    ask({27, 3, 2, 1, 2}); // shorter than any real one
    const words full = {2, 0, 0, 27, 2, 2, 101, 119, 27, 3, 0};
    EXPECT_EQ(ask({96, 11}), full);
    for (std::size_t room = 0; room < full.size(); room++)
        EXPECT_EQ(ask({96, static_cast<int>(room)}), words(full.begin(), full.begin() + room));
}

TEST_F(store_test, RequestsThatCannotBeServed) {
    EXPECT_EQ(text(record(1, 4)), "***Error in JOURNAL...No output file name");
    EXPECT_EQ(text({93}), "***Error...Journal file not defined");
    EXPECT_EQ(text({91, 0}), "***Error...This processing step is not defined");
    EXPECT_EQ(text({92, 1}), "***Error...Cannot advance any further");
    EXPECT_EQ(text({92, -1}), "***Error...Cannot backup any further");
    EXPECT_EQ(ask({96, 10}), words{-1});

    EXPECT_EQ(journal_text(begin("")), "***Error...No file name supplied for Journal");
    EXPECT_EQ(journal_text(begin(std::string(72, 'x'))), "***Error...No file name supplied for Journal");
    EXPECT_TRUE(begin(std::string(71, 'x')).empty());

    const char* invalid = "***Error...Invalid control action";
    for (const words& in :
         {words{}, words{97}, words{-1, 0, 0}, words{1}, words{1, 0, 2, 5}, words{1, 0, -1, 5}, words{90, 1},
          words{91}, words{92}, words{94}, words{94, 9, 1}, words{94, -1}, words{96}})
        EXPECT_EQ(text(in), invalid) << in.size();
    EXPECT_EQ(ask({97}).size(), 20u);
    EXPECT_EQ(journal_text(words{-1, 1000, 0x20202041}), "A") << "a text shorter than it claims";
}

TEST_F(store_test, LimitsOfRecordsAndWords) {
    begin("a.jou;1");
    for (int i = 0; i < 200; i++) ask(record(1, 0));
    EXPECT_EQ(ask(record(2, 0))[0], 200);
    EXPECT_EQ(text(record(2, 0)), "***Error in JOURNAL...INDX dimension exceeded");

    ask({91, 0}); // 603 words are used, dead ones included
    EXPECT_EQ(journal_words_left(), 1000000 - 603);
    EXPECT_EQ(text(record(3, 1000000 - 603 - 2)), "***Error in JOURNAL...IR dimension exceeded");
    EXPECT_EQ(ask(record(3, 1000000 - 603 - 3))[0], 1);
    EXPECT_EQ(journal_words_left(), 0);
    EXPECT_EQ(text(record(3, 0)), "***Error in JOURNAL...IR dimension exceeded");

    EXPECT_EQ(text({93}), "Journal saved on file");
    EXPECT_EQ(load("a.jou;1")[50], 0);
    EXPECT_EQ(journal_words_left(), 603 - 3) << "the 200 cut off records are not carried on";
    EXPECT_EQ(ask({91, 1}), reply(1, record(3, 1000000 - 603 - 3)));
}

// The bytes as another program would read them: each record between two lengths, all little-endian.
TEST_F(store_test, FileIsWrittenAfterEveryStepInItsFraming) {
    begin("a.jou;1", "d/raw.pfx");
    ask({3, 1, 1, -2});
    ask({4, 2, 0});
    ask({91, 0});
    ask({0x59, 0x01020304, 0}); // step 1 again: the words of the first one stay as dead words
    const std::string head = "d/raw.pfx" + std::string(191, '\0');
    EXPECT_EQ(read_all("a.jou;1"), le({200}) + head + le({200}) + le({8, 1, 10, 8}) + le({8, 0, 7, 8}) +
                                       le({40, 3, 1, 1, -2, 4, 2, 0, 0x59, 0x01020304, 0, 40}));
    EXPECT_FALSE(journal_unsaved());
}

TEST_F(store_test, SavedJournalComesBackAndGoesOnUnderANewName) {
    begin("a.jou;1");
    for (int i = 0; i < 5; i++) ask(record(i, 2 * i, i));
    EXPECT_EQ(text({93}), "Journal saved on file");
    EXPECT_EQ(text(record(1, 4)), "***Error in JOURNAL...No output file name");
    const std::string before = read_all("a.jou;1");

    const words loaded = load("a.jou;1");
    EXPECT_EQ(journal_head_name(loaded), "raw.pfx");
    EXPECT_EQ(words(loaded.begin() + 50, loaded.end()), reply(0, record(0, 0, 0)));
    EXPECT_EQ(text(record(1, 4)), "***Error in JOURNAL...No output file name") << "not into the loaded file";
    EXPECT_EQ(text({93}), "***Error...No file name supplied for Journal");

    EXPECT_TRUE(begin("a.jou;2").empty());
    EXPECT_EQ(ask({91, 4}), reply(4, record(4, 8, 4)));
    EXPECT_EQ(ask(record(8, 1)), reply(5, record(8, 1)));
    EXPECT_EQ(text({93}), "Journal saved on file");
    EXPECT_EQ(read_all("a.jou;1"), before);
    load("a.jou;2");
    EXPECT_EQ(ask({91, 3}), reply(3, record(3, 6, 3)));
    EXPECT_EQ(ask({96, 100})[0], 5);
}

TEST_F(store_test, AbortDeletesOnlyWhatTheStoreHasWritten) {
    write_all("other", "mine");
    begin("other");
    EXPECT_EQ(text({95}), "Journal aborted");
    EXPECT_EQ(read_all("other"), "mine") << "begun, never written";

    begin("a.jou;1");
    ask(record(0, 4));
    ask({93});
    ask({95});
    EXPECT_NE(read_all("a.jou;1"), "") << "saved and closed";
    load("a.jou;1");
    ask({95});
    EXPECT_NE(read_all("a.jou;1"), "") << "loaded";

    begin("b.jou;1");
    ask(record(0, 4));
    ask({95});
    EXPECT_EQ(read_all("b.jou;1"), "") << "under way";
    EXPECT_EQ(text({91, 0}), "***Error...This processing step is not defined");
}

TEST_F(store_test, AFirstSaveOverAnExistingFileStopsUnlessTheCallerHelps) {
    write_all("a.jou;1", "mine");
    begin("a.jou;1");
    EXPECT_EXIT(ask(record(0, 4)), testing::ExitedWithCode(1),
                "XVEN: NEEDS WRITE PRIVILEDGE IN LOCAL DIRECTORY");

    journal_store_hooks.name_taken = [](const std::string& name) { return name + "1"; };
    EXPECT_EQ(ask(record(0, 4)), reply(0, record(0, 4)));
    EXPECT_EQ(read_all("a.jou;1"), "mine");
    EXPECT_EQ(read_all("a.jou;11").size(), 4u * 8 + 200 + 8 + 4 + 4 * 7);
}

TEST_F(store_test, RecordsStayInMemoryWhileTheFolderCannotBeWritten) {
    static int failures;
    failures = 0;
    journal_store_hooks.write_failed = [](const char*) { failures++; };
    begin("later/a.jou;1"); // the folder does not exist yet
    EXPECT_EQ(ask(record(0, 4)), reply(0, record(0, 4)));
    EXPECT_EQ(ask(record(1, 4)), reply(1, record(1, 4)));
    EXPECT_EQ(text({93}), "XVEN: NEEDS WRITE PRIVILEDGE IN LOCAL DIRECTORY");
    EXPECT_TRUE(journal_unsaved());
    EXPECT_EQ(failures, 3);
    EXPECT_EQ(ask({91, 0}), reply(0, record(0, 4))) << "a failed save keeps the journal open";

    std::filesystem::create_directory("later");
    EXPECT_EQ(text({93}), "Journal saved on file");
    EXPECT_FALSE(journal_unsaved());
    load("later/a.jou;1");
    EXPECT_EQ(ask({91, 1}), reply(1, record(1, 4)));
}

TEST_F(store_test, StringHelpersCountFromOne) {
    struct {
        int n, equal, differs;
    } cases[] = {{5, 3, 1}, {-5, 4, 5}, {2, 0, 1}, {-2, 0, 2}, {0, 0, 0}, {-3, 3, 2}};
    for (const auto& c : cases) {
        EXPECT_EQ(lbeq("ab--c", '-', c.n), c.equal) << c.n;
        EXPECT_EQ(lbne("ab--c", '-', c.n), c.differs) << c.n;
    }
    EXPECT_EQ(lbne("---", '-', 3), 0);
    EXPECT_EQ(lenb("abc", 4), 3);
    EXPECT_EQ(lenb("abc", 3), -1);
    EXPECT_EQ(lenb("", 1), 0);
}

} // namespace norva::test
