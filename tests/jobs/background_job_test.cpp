#include "jobs/background_job.h"

#include <gtest/gtest.h>
#include <memory>

#include "jobs/process.h"
#include "shared/failure.h"
#include "support/session_fixture.h"

namespace welvane::test {
namespace {

/// The thread of a window: sleeps until a job wakes it.
class Window {
  public:
    std::function<void()> wake() {
        return [this] {
            const std::lock_guard lock(mutex_);
            ++calls_;
            woken_.notify_all();
        };
    }
    /// Sleeps until `done` holds, which is asked again at each call.
    void until(const std::function<bool()>& done) {
        while (true) {
            std::unique_lock lock(mutex_);
            const int seen = calls_;
            lock.unlock();
            if (done()) return;
            lock.lock();
            woken_.wait(lock, [&] { return calls_ != seen; });
        }
    }

  private:
    std::mutex mutex_;
    std::condition_variable woken_;
    int calls_ = 0;
};

class BackgroundJobs : public SessionTest {
  protected:
    /// A file of many records, so that the jobs run side by side.
    void loadLong(int channels) {
        LasText las;
        las.start = 0;
        las.stop = 2000;
        las.curves.clear();
        for (int channel = 0; channel < channels; ++channel) las.curves += "C" + std::to_string(channel) + ". : X\n";
        las.channels = channels;
        load(0, las);
        app.settings.certifyAfter = app.settings.editAfter = false;
    }
    static BackgroundJob::Step pass(ProcessOutcome& outcome) {
        return [&outcome](App& process, Session& own) {
            ProcessRequest request;
            request.sessionOpen = true;
            outcome = welvane::process(process, own, request);
        };
    }
    Window window;
    MemoryPlatform own, other;
};

TEST_F(BackgroundJobs, twoRunSideBySideWithoutKnowingEachOther) {
    loadLong(5);
    ProcessOutcome outcomes[2];
    std::unique_ptr<BackgroundJob> jobs[2];
    MemoryPlatform* platforms[] = {&own, &other};
    for (int job = 0; job < 2; ++job) {
        app.run.targetFile = folder.path("out" + std::to_string(job) + ".las");
        session.tables.setting(PrdRow::Null) = job == 0 ? "-999.25" : "-9999";
        jobs[job] = std::make_unique<BackgroundJob>(app, session, *platforms[job], window.wake());
    }
    for (int job = 0; job < 2; ++job) jobs[job]->start(pass(outcomes[job]));
    window.until([&] {
        for (const auto& job : jobs) EXPECT_GE(job->labels().percent, 0);
        return jobs[0]->finished() && jobs[1]->finished();
    });
    Session taken[2];
    for (int job = 0; job < 2; ++job) {
        jobs[job]->takeBack(app, taken[job]);
        EXPECT_TRUE(outcomes[job].completed) << outcomes[job].refusal << jobs[job]->failure();
    }
    EXPECT_NE(folder.read("out0.las").find("-999.25"), std::string::npos);
    EXPECT_NE(folder.read("out1.las").find("-9999"), std::string::npos);
    EXPECT_EQ(taken[1].tables.setting(PrdRow::Null), "-9999");
    EXPECT_EQ(app.run.targetFile, folder.path("out1.las"));
}

TEST_F(BackgroundJobs, aQuestionWaitsForTheWindowAlone) {
    BackgroundJob job(app, session, own, window.wake());
    Texts heard;
    job.start([&](App& process, Session&) {
        heard.push_back(process.user.ask({"A", "box", Buttons::YesNo}) == Answer::Yes ? "yes" : "no");
        heard.push_back(process.user.askText({"B", "text", ""}));
        heard.push_back(process.user.askFile({"C", "las", "", "", false}));
        heard.push_back(process.user.askFolder("D", "/"));
        process.user.tell({.text = "a note"});
    });
    Texts titles;
    for (int question = 0; question < 4; ++question) {
        std::optional<Question> asked;
        window.until([&] { return (asked = job.desk().pending()).has_value(); });
        titles.push_back(std::visit([](const auto& prompt) { return prompt.title; }, *asked));
        EXPECT_FALSE(job.finished());
        if (question == 0)
            job.desk().answer(Answer::Yes);
        else
            job.desk().answer("answer " + std::to_string(question));
    }
    job.takeBack(app, session);
    EXPECT_EQ(titles, (Texts{"A", "B", "C", "D"}));
    EXPECT_EQ(heard, (Texts{"yes", "answer 1", "answer 2", "answer 3"}));
    ASSERT_EQ(job.desk().notes().size(), 1U);
    EXPECT_EQ(job.desk().notes()[0].text, "a note");
}

TEST_F(BackgroundJobs, aCancelIsHeardWhileTheJobRuns) {
    loadLong(1);
    app.run.targetFile = folder.path("out.las");
    BackgroundJob job(app, session, own, window.wake());
    ProcessOutcome outcome;
    std::atomic<bool> mayGoOn{false};
    job.start([&](App& process, Session& mine) {
        while (!mayGoOn) std::this_thread::yield();
        pass(outcome)(process, mine);
    });
    user.willAnswer(Answer::Ok);
    job.askCancel(user);
    mayGoOn = true;
    job.desk().close();
    job.takeBack(app, session);
    EXPECT_TRUE(outcome.cancelled);
    EXPECT_FALSE(std::filesystem::exists(folder.path("out.las")));
}

TEST_F(BackgroundJobs, aWindowThatClosesWaitsForNobody) {
    Answer heard = Answer::Yes;
    std::string text = "unset";
    {
        BackgroundJob job(app, session, own, window.wake());
        job.start([&](App& process, Session&) {
            heard = process.user.ask({"A", "box", Buttons::YesNo});
            text = process.user.askText({"B", "text", "given"});
        });
        window.until([&] { return job.desk().pending().has_value(); });
    }
    EXPECT_EQ(heard, Answer::No);
    EXPECT_EQ(text, "");
}

TEST_F(BackgroundJobs, whatFailsIsToldAndTheWindowIsUntouched) {
    load(0, {"GR"});
    BackgroundJob job(app, session, own, window.wake());
    job.start([](App& process, Session& mine) {
        process.run.statusText = "Writing";
        process.run.progressFraction = 2;
        mine.tables.setting(PrdRow::From) = "changed";
        throw RunTimeFailure("overflow");
    });
    window.until([&] { return job.finished(); });
    EXPECT_EQ(job.failure(), "overflow");
    EXPECT_EQ(job.labels().status, "Writing");
    EXPECT_EQ(job.labels().percent, 100);
    EXPECT_NE(setting(PrdRow::From), "changed") << "until it is taken back";
    job.takeBack(app, session);
    EXPECT_EQ(setting(PrdRow::From), "changed");
}

}  // namespace
}  // namespace welvane::test
