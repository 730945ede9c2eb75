"""Memories that several threads share, and that code of the user uses in the middle of a call."""

import gc
import itertools
import threading

import kvr


def in_a_thread(work):
    """What ``work()`` returns; fails when it waits for ever."""
    results = []
    thread = threading.Thread(target=lambda: results.append(work()), daemon=True)
    thread.start()
    thread.join(timeout=30)
    assert results, "it raised or did not end"
    return results[0]


def repeated_beside(work, other, threads=1):
    """Calls ``work()`` in other threads until ``other()`` is done; returns the different results."""
    done = threading.Event()
    results = set()

    def repeat():
        while not done.is_set():
            results.add(work())

    all_threads = [threading.Thread(target=repeat) for _ in range(threads)]
    for thread in all_threads:
        thread.start()
    try:
        other()
    finally:
        done.set()
        for thread in all_threads:
            thread.join()
    return results


class Number:
    """An integer that looks at the memory whenever its value is needed."""

    def __init__(self, memory, number):
        self.memory = memory
        self.number = number

    def __index__(self):
        return self.number + self.memory.depth - len(self.memory)

    def __format__(self, spec):
        return f"{self.number} of {self.memory.depth}"


def test_numbers_may_use_the_memory():
    m = kvr.Memory(8, 4, fill=1)

    def work():
        m[Number(m, 2)] = Number(m, 7)
        return m[Number(m, 2)], m[Number(m, -2)]

    assert in_a_thread(work) == (7, 7)


def test_the_text_of_an_index_may_use_the_memory():
    m = kvr.Memory(8, 4)

    def work():
        try:
            return m[Number(m, 9)]
        except IndexError as error:
            return str(error)

    assert in_a_thread(work) == "index 9 of 4: the memory has the addresses 0 to 3"


def test_a_number_may_resize_the_memory():
    class Shrinking(Number):
        def __index__(self):
            self.memory.resize(2)
            return self.number

    m = kvr.Memory(8, 4, fill=1)

    def work():
        try:
            m[3] = Shrinking(m, 7)
        except IndexError as error:
            return str(error)

    assert in_a_thread(work) == "index 3: the memory has the addresses 0 to 1"
    assert list(m) == [1, 1]


def test_finalizers_may_use_the_memory():
    m = kvr.Memory(8, 64)
    m[:] = range(64)
    widths = []

    class Cycle:
        def __init__(self):
            self.itself = self

        def __del__(self):
            widths.append(m.width)

    def work():
        thresholds = gc.get_threshold()
        try:
            for threshold in range(1, 21):  # the collection falls into the calls at some of these
                gc.disable()
                gc.collect()
                Cycle()
                gc.set_threshold(threshold)
                gc.enable()
                assert [list(m) for _ in range(8)] == [list(range(64))] * 8
                assert list(m.runs()) == [(word, word, word) for word in range(64)]
        finally:
            gc.set_threshold(*thresholds)
            gc.enable()
        gc.collect()
        return len(widths)

    assert in_a_thread(work) == 20
    assert set(widths) == {8}


def test_a_slice_is_set_in_one_step():
    m = kvr.Memory(8, 64)
    even, odd = [1, None] * 32, [None, 1] * 32
    m[:] = even

    def assign():
        for words in itertools.islice(itertools.cycle([odd, even]), 1000):
            m[:] = words

    assert repeated_beside(m.count_set, assign) == {32}
    assert list(m) == even


def test_arrays_have_the_size_that_the_memory_has():
    deep = 200_000
    m = kvr.Memory(8, deep, fill=1)

    def resize():
        m.resize(deep - 1)
        m.resize(deep)

    found = set()

    def read():
        for _ in range(150):
            found.update((len(m.is_set), len(m.to_numpy())))

    repeated_beside(resize, read, threads=4)
    assert found <= {deep - 1, deep} and len(m.is_set) == deep
