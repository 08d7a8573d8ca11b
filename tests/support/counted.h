#pragma once

// Records that count how many of them were destroyed.
template <class Record>
class Counted : public Record {
public:
    template <class... Argument>
    explicit Counted(int* deaths, const Argument&... argument)
        : Record(argument...), deaths_(deaths) {}
    ~Counted() override { ++*deaths_; }

private:
    int* deaths_;
};
