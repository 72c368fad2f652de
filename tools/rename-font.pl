#!/usr/bin/perl
# rename-font.pl FILE NAME: the TrueType font under another name, on standard output. Its table "name" is written anew behind all
# others.
use strict;
use warnings;

my ($file, $name) = @ARGV;
open my $in, '<:raw', $file or die "$file: $!\n";
my $font = do { local $/; <$in> };

my $wide = join '', map { "\0$_" } split //, $name;
my $records = join '', map { pack 'n6', 3, 1, 0x409, $_, length $wide, 0 } 0 .. 6;    # 6 is the PostScript name
my $table = pack('n3', 0, 7, 6 + length $records) . $records . $wide;

$font .= "\0" x (-length($font) % 4);
my $at = length $font;
my $padded = $table . "\0" x (-length($table) % 4);
my $sum = 0;
$sum = ($sum + $_) & 0xFFFFFFFF for unpack 'N*', $padded;
for my $i (0 .. unpack('n', substr $font, 4, 2) - 1) {
    my $entry = 12 + 16 * $i;
    substr($font, $entry + 4, 12) = pack 'N3', $sum, $at, length $table if substr($font, $entry, 4) eq 'name';
}
binmode STDOUT;
print $font, $padded;
