// Reads the file of +file= with $readmemh, or with +bin $readmemb, and prints the words of a memory.
module memory_reader;
    reg [7:0] words [0:15];
    reg [8*512-1:0] name;
    integer address;

    initial begin
        for (address = 0; address < 16; address = address + 1)
            words[address] = 8'hA5; // a value that no test file sets
        if (!$value$plusargs("file=%s", name))
            $finish;
        if ($test$plusargs("bin"))
            $readmemb(name, words);
        else
            $readmemh(name, words);
        for (address = 0; address < 16; address = address + 1)
            $display("%0d %b", address, words[address]);
        $finish;
    end
endmodule
