#include "database/odbc/OdbcWorker.h"

#include <condition_variable>
#include <thread>
#include <utility>

#include "system/Waiting.h"

namespace tolvan {
namespace {

constexpr std::string_view whoIsWaitedFor = "El servidor de la base de datos no ha respondido todavía; esperando…";

using std::chrono::milliseconds;

}  // namespace

struct OdbcWorker::Core {
  std::mutex mutex;
  std::condition_variable changed;
  Work next;
  bool stopping = false;
  bool ended = false;
  std::shared_ptr<OdbcSession> session = std::make_shared<OdbcSession>();
};

OdbcWorker::OdbcWorker(milliseconds grace) : grace_(grace), core_(std::make_shared<Core>()) {
  std::thread([core = core_] { Serve(core); }).detach();
}

OdbcWorker::~OdbcWorker() {
  std::unique_lock lock(core_->mutex);
  core_->stopping = true;
  core_->changed.notify_all();
  if (!lost_) core_->changed.wait_for(lock, grace_, [&] { return core_->ended; });
}

void OdbcWorker::Serve(const std::shared_ptr<Core>& core) {
  for (;;) {
    Work work;
    {
      std::unique_lock lock(core->mutex);
      core->changed.wait(lock, [&] { return core->next || core->stopping; });
      if (core->stopping) break;
      work = std::exchange(core->next, nullptr);
    }
    work(*core->session);
  }
  std::shared_ptr<OdbcSession> session;
  {
    const std::lock_guard lock(core->mutex);
    session = std::move(core->session);
  }
  session.reset();  // disconnects, and may take its time; a thread that still cancels does it when it is done
  {
    const std::lock_guard lock(core->mutex);
    core->ended = true;
  }
  core->changed.notify_all();
}

void OdbcWorker::Post(Work work) {
  const std::lock_guard lock(core_->mutex);
  core_->next = std::move(work);
  core_->changed.notify_all();
}

void OdbcWorker::WaitFor(const Ready& ready, milliseconds limit, const Interruption* interruption) {
  Waiting waiting(interruption, whoIsWaitedFor, serverPatience);
  switch (waiting.Until(ready, limit + grace_)) {
    case WaitEnd::Ready:
      return;
    case WaitEnd::Stopped:
      return Stop(ready, {HostErrorKind::Interrupted, "se pidió interrumpir el trabajo"});
    case WaitEnd::TimedOut:
      return Stop(ready, {HostErrorKind::Timeout, "el servidor no responde; se abandonó la conexión"});
  }
}

void OdbcWorker::Stop(const Ready& ready, const HostError& cause) {
  // Cancelling talks to the server too and may never come back.
  std::thread([core = core_] {
    std::shared_ptr<OdbcSession> session;
    {
      const std::lock_guard lock(core->mutex);
      session = core->session;
    }
    if (session) session->Cancel();
  }).detach();
  lost_ = !ready(grace_);
  throw HostError(cause);
}

}  // namespace tolvan
