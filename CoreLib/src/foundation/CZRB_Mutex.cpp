#include "CZRB_Mutex.h"

#include "CZRB_Exception.h"

#include <cerrno>
#include <pthread.h>

// The system mutex, shared by all copies of one CZRB_Mutex and destroyed with the last one.
struct CZRB_Mutex::CHandle {
    pthread_mutex_t mutex{};
    bool created = false;

    // Creates a recursive, robust mutex; `created` tells whether that worked.
    CHandle() {
        pthread_mutexattr_t attributes;
        if (pthread_mutexattr_init(&attributes) != 0) {
            return;
        }
        created = pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE) == 0 &&
                  pthread_mutexattr_setrobust(&attributes, PTHREAD_MUTEX_ROBUST) == 0 &&
                  pthread_mutex_init(&mutex, &attributes) == 0;
        pthread_mutexattr_destroy(&attributes);
    }
    ~CHandle() {
        if (created) {
            pthread_mutex_destroy(&mutex);
        }
    }
    CHandle(const CHandle&) = delete;
    CHandle& operator=(const CHandle&) = delete;
};

CZRB_Mutex::CZRB_Mutex() : m_handle(std::make_shared<CHandle>()) {
    if (!m_handle->created) {
        throw CZRB_Exception(32, this, 0);
    }
}

CZRB_Mutex::CZRB_Mutex(const CZRB_Mutex& other) : m_handle(other.m_handle) {}

CZRB_Mutex& CZRB_Mutex::operator=(const CZRB_Mutex& other) {
    DataCopy(other);
    return *this;
}

CZRB_Mutex::~CZRB_Mutex() = default;

void CZRB_Mutex::DataCopy(const CZRB_Mutex& other) {
    m_handle = other.m_handle;
}

unsigned int CZRB_Mutex::Lock() {
    const int result = pthread_mutex_lock(&m_handle->mutex);
    if (result == 0) {
        return 0;
    }
    if (result == EOWNERDEAD) {
        // The owner ended while holding it: the caller owns it now, reported as 1.
        pthread_mutex_consistent(&m_handle->mutex);
    }
    return 1;
}

unsigned int CZRB_Mutex::Unlock() {
    return pthread_mutex_unlock(&m_handle->mutex) == 0 ? 0 : 1;
}
