#pragma once

#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdint>
#include <stdexcept>

// While it exists this thread obeys the permissions of files, also when the superuser runs it.
class ObeysPermissions {
public:
    ObeysPermissions() {
        call(SYS_capget);
        const __user_cap_data_struct before = data_[0];
        data_[0].effective &= ~(1U << CAP_DAC_OVERRIDE | 1U << CAP_DAC_READ_SEARCH);
        call(SYS_capset);
        data_[0] = before;
    }
    ObeysPermissions(const ObeysPermissions&) = delete;
    ObeysPermissions& operator=(const ObeysPermissions&) = delete;
    ~ObeysPermissions() { syscall(SYS_capset, &header_, data_); }

private:
    void call(long number) {
        if (syscall(number, &header_, data_) != 0) {
            throw std::runtime_error("capabilities cannot be changed");
        }
    }

    __user_cap_header_struct header_ = {_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct data_[_LINUX_CAPABILITY_U32S_3] = {};
};
