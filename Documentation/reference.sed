# What the reference adds to the headers, or leaves out of them.

# Nobody looks up what the compiler writes, is asked not to, or what a move does.
/= (default|delete);$/d
/&&( other)?\) noexcept;$/d

# A hash function for the standard library's containers is none that anybody calls.
/^template <>$/{
    N
    /std::hash/{
        :body
        N
        /\n};$/!b body
        d
    }
}

# The tables of constants: a constant's description is its value.
s#^( *inline constexpr [^;]*( = |\{)([^;{}]*)\}?;)$#\1 ///< @hideinitializer `\3`#

# Each type that can be coded has these two.
s|^( *static [A-Za-z]+ decode\(const Decoder& decoder\);)$|\1 ///< As `Coding` describes.|
s|^( *void encode\(Encoder& encoder\) const;)$|\1 ///< As `Coding` describes.|
