// Workers as threads of this process, for systems without copies of a process. Elsewhere its tests alone are built with it, for the thread sanitizer.

#include "stream/Workers.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <list>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#if defined(_WIN32)
#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
#include <io.h>
#include <windows.h>
#else
#include <poll.h>
#endif

namespace Keltrix::App {

int MostWorkers() { return static_cast<int>(std::max(std::thread::hardware_concurrency(), 1u)); }

class Workers::Pool {
    struct Slot {
        enum State { Waiting, Running, Done, Failed, Lost } state = Waiting;
        std::string request;
        std::string reply;
        std::string failure;   // of the last attempt
        bool wasTried = false; // alone, and in vain
    };

public:
    Pool(int count, RequestSource& source, Work work) :
        m_count(static_cast<std::size_t>(count)), m_source(source), m_work(std::move(work))
    {}
    Pool(const Pool&) = delete;
    Pool& operator=(const Pool&) = delete;
    // What is under way is finished first: a thread cannot be ended.
    ~Pool()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_isClosing = true;
        }
        m_forWork.notify_all();
        for (std::thread& thread : m_threads)
            thread.join();
    }

    std::optional<WorkerReply> Next()
    {
        for (;;) {
            HandOut();
            if (auto reply = FirstReply()) return reply;
            if (m_slots.empty() && m_hasEnded) return std::nullopt;
            Wait();
        }
    }

private:
    static constexpr std::size_t SLOTS_PER_WORKER = 4;
    static constexpr std::chrono::milliseconds LOOK_AGAIN{10}; // at a source that said "later"

    // Reads on until as many requests wait as there are workers.
    void HandOut()
    {
        m_isLater = false;
        for (;;) {
            Slot* here = nullptr;
            {
                const std::lock_guard lock(m_mutex);
                TryFailedAgain();
                const auto first = std::find_if(m_slots.begin(), m_slots.end(), IsWaiting);
                if (first != m_slots.end() && m_idle == 0 && m_threads.size() < m_count) Start();
                if (first != m_slots.end() && m_count == 0) here = &*first;
                if (!here && Waiting() >= Hands()) return;
            }
            if (here) return Do(*here);
            if (!ReadOn()) return;
        }
    }

    static bool IsWaiting(const Slot& slot) { return slot.state == Slot::Waiting; }

    std::size_t Waiting() const
    {
        return static_cast<std::size_t>(std::count_if(m_slots.begin(), m_slots.end(), IsWaiting));
    }

    // How many threads do the work: this one where there is no other.
    std::size_t Hands() const { return std::max<std::size_t>(m_count, 1); }

    // Whether one more request was available.
    bool ReadOn()
    {
        if (m_hasEnded || m_isLater || m_slots.size() >= SLOTS_PER_WORKER * Hands()) return false;
        Slot slot;
        switch (m_source.Next(slot.request, m_slots.empty())) {
        case RequestSource::Answer::Request: {
            const std::lock_guard lock(m_mutex);
            m_slots.push_back(std::move(slot));
        }
            m_forWork.notify_one();
            return true;
        case RequestSource::Answer::Later:
            m_isLater = true;
            return false;
        default:
            m_hasEnded = true;
            return false;
        }
    }

    void Start()
    {
        try {
            m_threads.emplace_back([this] { Serve(); });
        } catch (const std::system_error& reason) {
            m_count = m_threads.size(); // goes on with those there are
            m_told = "--jobs: " +
                     (m_count == 0 ? "no worker can be started, the work is done in one thread"
                                   : "only " + std::to_string(m_count) + " workers can be started") +
                     ": " + reason.code().message();
        }
    }

    void Serve()
    {
        for (;;) {
            Slot* slot = nullptr;
            {
                std::unique_lock lock(m_mutex);
                ++m_idle;
                m_forWork.wait(lock, [this] { return m_isClosing || Waiting() > 0; });
                --m_idle;
                if (m_isClosing) return;
                slot = &*std::find_if(m_slots.begin(), m_slots.end(), IsWaiting);
                slot->state = Slot::Running;
            }
            Do(*slot);
        }
    }

    // Nobody else looks at the request and the reply meanwhile.
    void Do(Slot& slot)
    {
        Slot::State state = Slot::Done;
        try {
            m_work(slot.request, slot.reply);
        } catch (const std::exception& failure) {
            state = Slot::Failed;
            slot.failure = failure.what();
        } catch (...) {
            state = Slot::Failed;
            slot.failure = "unknown failure";
        }
        {
            const std::lock_guard lock(m_mutex);
            slot.state = state;
            ++m_attempts;
        }
        m_forReplies.notify_one();
    }

    // A request that failed is split and each part retried; a single part is retried once, since another thread may have exhausted the memory.
    void TryFailedAgain()
    {
        for (auto slot = m_slots.begin(); slot != m_slots.end();) {
            const auto next = std::next(slot);
            if (slot->state == Slot::Failed) TryAgain(slot);
            slot = next;
        }
    }

    void TryAgain(std::list<Slot>::iterator slot)
    {
        std::vector<std::string> parts = m_source.Parts(slot->request);
        if (parts.size() > 1) {
            for (std::string& part : parts) {
                Slot alone;
                alone.request = std::move(part);
                m_slots.insert(slot, std::move(alone));
            }
            m_slots.erase(slot);
        } else if (slot->wasTried) {
            slot->state = Slot::Lost;
            return;
        } else {
            slot->wasTried = true;
            slot->reply.clear();
            slot->state = Slot::Waiting;
        }
        m_forWork.notify_all();
    }

    // What is told, then the reply of the first request, where it is there.
    std::optional<WorkerReply> FirstReply()
    {
        WorkerReply reply;
        if (!m_told.empty()) {
            reply.kind = WorkerReply::Told;
            reply.how = std::exchange(m_told, {});
            return reply;
        }
        const std::lock_guard lock(m_mutex);
        if (m_slots.empty()) return std::nullopt;
        Slot& first = m_slots.front();
        if (first.state == Slot::Done) {
            reply.size = first.reply.size();
            reply.bytes = std::make_unique_for_overwrite<char[]>(reply.size);
            std::copy(first.reply.begin(), first.reply.end(), reply.bytes.get());
        } else if (first.state == Slot::Lost) {
            reply.kind = WorkerReply::Lost;
            reply.request = std::move(first.request);
            reply.how = "unable to go on: " + first.failure;
        } else {
            return std::nullopt;
        }
        m_slots.pop_front();
        return reply;
    }

    // For the end of an attempt, or for more from the source where that said "later".
    void Wait()
    {
        std::unique_lock lock(m_mutex);
        const auto isUnderWay = [](const Slot& slot) {
            return slot.state == Slot::Waiting || slot.state == Slot::Running;
        };
        const auto hasNews = [this, isUnderWay] {
            return m_attempts != m_seenAttempts || std::none_of(m_slots.begin(), m_slots.end(), isUnderWay);
        };
        if (m_isLater) {
            while (!m_forReplies.wait_for(lock, LOOK_AGAIN, hasNews) && !IsReadable(m_source.Descriptor())) {
            }
        } else if (m_count > 0) {
            m_forReplies.wait(lock, hasNews);
        }
        m_seenAttempts = m_attempts;
    }

    // Used by the thread that pulls replies alone.
    std::size_t m_count;
    RequestSource& m_source;
    const Work m_work;
    std::string m_told; // not yet
    std::vector<std::thread> m_threads;
    std::size_t m_seenAttempts = 0;
    bool m_hasEnded = false;
    bool m_isLater = false;

    // Used by all, under the lock. That thread alone adds slots and takes them out.
    std::mutex m_mutex;
    std::condition_variable m_forWork;
    std::condition_variable m_forReplies;
    std::list<Slot> m_slots; // in the order in which they are put out
    std::size_t m_idle = 0;
    std::size_t m_attempts = 0;
    bool m_isClosing = false;
};

bool IsReadable(int descriptor)
{
#if defined(_WIN32)
    const HANDLE handle = reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
    // A file never has to be waited for, and of a console nothing is known. Of a pipe that cannot be looked into nothing is known either: requests are
    // then read one by one, whenever no other is under way.
    DWORD available = 0;
    if (GetFileType(handle) != FILE_TYPE_PIPE) return true;
    if (!PeekNamedPipe(handle, nullptr, 0, nullptr, &available, nullptr)) return GetLastError() == ERROR_BROKEN_PIPE;
    return available > 0;
#else
    pollfd asked{descriptor, POLLIN, 0};
    return poll(&asked, 1, 0) != 0;
#endif
}

Workers::Workers(int count, RequestSource& source, Work work) :
    m_pool(std::make_unique<Pool>(count, source, std::move(work)))
{}

Workers::~Workers() = default;

std::optional<WorkerReply> Workers::Next() { return m_pool->Next(); }

} // namespace Keltrix::App
